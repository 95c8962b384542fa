"use strict";
// Search over all names and documentation, fast enough to run with each key.

const folded = (text) => text.replace(/\s+/g, " ").trim().toLowerCase();
const isUpper = (code) => code >= 65 && code <= 90;
const isWordPart = (code) => (code >= 48 && code <= 57) || (code >= 97 && code <= 122) || isUpper(code) || code > 127;

/** Whether the letters are the first ones of words of the name, from its first word on: COL of CustomerOrderLine. */
function isInitials(letters, name) {
  let at = 0;
  let before = 0;
  for (let i = 0; i < name.length && at < letters.length; i++) {
    const code = name.charCodeAt(i);
    const next = name.charCodeAt(i + 1);
    const starts = isWordPart(code) &&
      (!isWordPart(before) || (isUpper(code) && (!isUpper(before) || (next >= 97 && next <= 122))));
    if (starts) {
      if (name[i].toLowerCase() !== letters[at]) {
        return false;
      }
      at++;
    }
    before = code;
  }
  return at === letters.length;
}

class Search {
  constructor(model) {
    this.model = model;
    this.all = [];
    for (const element of model.elements) {
      if (element && element.kind !== "model") {
        this.all.push(element);
      }
    }
    this.all = this.all.concat(model.others);
    this.names = this.all.map((element) => folded(element.name));
    this.kinds = this.all.map((element) => KIND_ORDER.indexOf(element.kind));
    this.texts = []; // [index, documentation] of those that have any
    this.all.forEach((element, index) => {
      const json = element.json;
      const text = [json.description, json.semantics, json.precondition, json.postcondition, json.stereotype,
                    ...(json.notes || [])].filter(Boolean).join("\n");
      if (text) {
        this.texts.push([index, text.toLowerCase()]);
      }
    });
  }

  /** Elements, the best first, and how many there are of each kind; `kind` leaves the others out. */
  find(query, kind) {
    const whole = folded(query);
    if (!whole) {
      return {hits: [], counts: {}};
    }
    const ranks = Array.from({length: 9}, () => []);
    const exact = query.trim();
    const words = whole.split(" ");
    const parts = whole.split("::");
    const maybeInitials = /^[\p{L}\d]{2,12}$/u.test(whole);
    const names = this.names;
    const taken = new Set();
    for (let i = 0; i < names.length; i++) {
      const name = names[i];
      const at = name.indexOf(whole);
      let rank = -1;
      if (at >= 0) {
        rank = name.length === whole.length ? (this.all[i].name === exact ? 0 : 1)
          : at === 0 ? 3 : this.startsWord(i, at) ? 5 : 6;
      } else if (maybeInitials && name[0] === whole[0] && isInitials(whole, this.all[i].name)) {
        rank = 2;
      } else if (words.length > 1 && words.every((word) => name.includes(word))) {
        rank = 6;
      } else if (parts.length > 1 && name.startsWith(parts.at(-1)) && this.endOfPath(this.all[i], parts.length).includes(whole)) {
        rank = 2;
      }
      if (rank >= 0) {
        ranks[rank].push(i);
        taken.add(i);
      }
    }
    for (const [index, text] of this.texts) {
      if (!taken.has(index)) {
        const at = text.indexOf(words.length > 1 && !text.includes(whole) ? words[0] : whole);
        if (at >= 0 && (words.length === 1 || text.includes(whole) || words.every((word) => text.includes(word)))) {
          const isWord = !isWordPart(text.charCodeAt(at - 1)) && !isWordPart(text.charCodeAt(at + whole.length));
          ranks[isWord && this.kinds[index] <= 2 ? 4 : isWord ? 7 : 8].push(index);
        }
      }
    }
    const counts = {};
    const hits = [];
    for (const rank of ranks) {
      const byKind = KIND_ORDER.map(() => []);
      for (const index of rank) {
        byKind[this.kinds[index]].push(index);
      }
      KIND_ORDER.forEach((word, number) => {
        const list = byKind[number];
        if (list.length === 0) {
          return;
        }
        counts[word] = (counts[word] || 0) + list.length;
        if (!kind || kind === word) {
          if (list.length <= 2000) {
            list.sort((a, b) => names[a].length - names[b].length || a - b);
          }
          for (const index of list) {
            hits.push(this.all[index]);
          }
        }
      });
    }
    return {hits, counts};
  }

  /** The last so many names of the qualified name. */
  endOfPath(element, count) {
    const names = [];
    for (let at = element; at && at.kind !== "model" && names.length < count; at = at.owner) {
      names.push(at.name);
    }
    return folded(names.reverse().join("::"));
  }

  startsWord(index, at) {
    const name = this.all[index].name;
    return !isWordPart(name.charCodeAt(at - 1)) || isUpper(name.charCodeAt(at));
  }
}
