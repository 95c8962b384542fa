"use strict";
// The model of the page: decoded, walked once, and looked up from then on.

/** The JSON in a script block, unpacked if it says so. */
async function readBlock(id) {
  const block = document.getElementById(id);
  let text = block.textContent;
  if (block.dataset.encoding === "gzip+base64") {
    const packed = atob(text);
    const bytes = new Uint8Array(packed.length);
    for (let i = 0; i < packed.length; i++) {
      bytes[i] = packed.charCodeAt(i);
    }
    const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream("gzip"));
    text = await new Response(stream).text();
  }
  return JSON.parse(text);
}

/** The members of an object of the document that list elements, in the document's order, and the kinds of these. */
const PARTS = [
  ["types", "type"], ["packages", "package"], ["elements", null], ["diagrams", "diagram"], ["arguments", "argument"],
  ["attributes", "attribute"], ["operations", "operation"], ["keys", "key"], ["roles", "role"],
];

/** Kinds in the order in which equally good hits of a search follow one another, with the words for people. */
const KINDS = {
  class: ["class", "classes"], package: ["package", "packages"], diagram: ["diagram", "diagrams"],
  other: ["not imported", "not imported"], attribute: ["attribute", "attributes"],
  operation: ["operation", "operations"], type: ["type", "types"], association: ["association", "associations"],
  role: ["role", "roles"], key: ["key", "keys"], argument: ["argument", "arguments"],
  generalization: ["generalization", "generalizations"], realization: ["realization", "realizations"],
  dependency: ["dependency", "dependencies"],
};
const KIND_ORDER = Object.keys(KINDS);

/** Whether something has a page; the others are shown on the page of their owner. */
const hasPage = (element) => !["attribute", "operation", "argument", "key", "role"].includes(element.kind);

class Model {
  constructor(document, page) {
    this.document = document;
    this.page = page;
    this.file = page.files[0] || "";
    const count = page.ids.reduce((sum, entry) => sum + (typeof entry === "string" ? 1 : entry), 1);
    this.elements = new Array(count).fill(null); // by number, from 1: {json, kind, owner, id, name, word}
    this.byId = new Map();
    this.numberElements(document.model);
    this.nameIds(page.ids);
    for (const [word, numbers] of Object.entries(page.kinds)) {
      for (const number of numbers) {
        this.elements[number].word = word;
      }
    }
    this.meant = new Map(page.means);
    this.labelRelations();
    this.takeLedger(page.ledger);
    this.takePictures(page.pictures || []);
  }

  numberElements(root) {
    const add = (json, kind, owner) => {
      const known = this.elements[json.id];
      if (known) {
        return known; // an argument may have two owners
      }
      const element = {json, kind, owner, id: "", name: json.name || "", word: kind};
      this.elements[json.id] = element;
      return element;
    };
    this.root = add(root, "model", null);
    const open = [this.root]; // not a recursion: packages may be nested as deep as a file likes
    while (open.length > 0) {
      const owner = open.pop();
      for (const [member, kind] of PARTS) {
        const list = owner.json[member];
        if (Array.isArray(list) && typeof list[0] === "object") {
          for (const json of list) {
            open.push(add(json, kind || json.kind, owner));
          }
        }
      }
    }
  }

  nameIds(ids) {
    let number = 1;
    for (const entry of ids) {
      if (typeof entry === "string") {
        this.elements[number++].id = entry;
        continue;
      }
      for (const end = number + entry; number < end; number++) {
        const element = this.elements[number];
        element.id = "q" + element.json.quid.toLowerCase();
      }
    }
    for (const element of this.elements) {
      if (element) {
        this.byId.set(element.id, element);
      }
    }
  }

  /** Relations without a name are called by what they relate. */
  labelRelations() {
    const names = (numbers) => (numbers || []).map((number) => (number && this.at(number) ? this.at(number).name : "?")).join(", ");
    const labels = {
      association: ({roles}) => (roles || []).map((role) => names([role.class])).join(" – "),
      generalization: ({subtypes, supertypes}) => `${names(subtypes)} → ${names(supertypes)}`,
      realization: ({realizationClass, specificationClass}) => `${names([realizationClass])} ⇢ ${names([specificationClass])}`,
      dependency: ({client, supplier}) => `${names([client])} ⇢ ${names([supplier])}`,
    };
    for (const element of this.elements) {
      if (element && !element.name && Object.hasOwn(labels, element.kind)) {
        element.label = labels[element.kind](element.json);
      }
    }
  }

  /** What is in the files and did not become part of the model counts as an element of the page. */
  takeLedger(ledger) {
    this.others = [];
    this.losses = [];
    this.changes = [];
    if (!ledger) {
      return;
    }
    for (const [kind, property, name, outcome, isLoss, reason, detail, file, line, description, quid] of ledger.entries) {
      const entry = {kind, property, name, outcome, isLoss: isLoss === 1, file, line,
                     reason: ledger.reasons[reason] + (detail ? (ledger.reasons[reason] ? " " : "") + detail : "")};
      if (entry.isLoss) {
        this.losses.push(entry);
      } else if (outcome === 1) {
        this.changes.push(entry);
      }
      if (outcome === 2 && !property && name && !/View(New)?$|Compartment$|^Swimlane$|^Focus_/.test(kind)) {
        this.addOther({line, name, description, quid, file: this.unit(file)}, kind, entry);
      }
    }
  }
  addOther(json, kind, entry) {
    let id = json.quid ? "q" + json.quid.toLowerCase() : `x${json.line}`;
    while (this.byId.has(id)) {
      id += "-";
    }
    const other = {kind: "other", word: kindInWords(kind), name: json.name, id, owner: null, entry, json};
    this.others.push(other);
    this.byId.set(id, other);
    return other;
  }

  /** The pictures of diagrams; those of diagrams that the model does not have come with elements of their own. */
  takePictures(pictures) {
    const blocks = document.querySelectorAll('script[type="image/svg+xml"]');
    const places = new Map();
    const key = (file, line) => `${line} ${file || ""}`;
    for (const element of [...this.others, ...this.elements]) {
      if (element && (element.kind === "diagram" || /diagram/.test(element.word))) {
        places.set(key(element.json.file, element.json.line), element);
      }
    }
    this.pictures = new Map();
    pictures.forEach(([kind, name, file, line], index) => {
      const unit = this.unit(file);
      const element = places.get(key(unit, line)) || this.addOther({name, file: unit, line}, kind, {kind, reason: ""});
      this.pictures.set(element, blocks[index]);
    });
  }
  pictureOf(element) {
    const block = this.pictures.get(element);
    return block && new Picture(block, element.name, (group) => this.shownBy(group));
  }
  /** The element that a view of a picture shows: by its identifier, else by its full name. */
  shownBy(group) {
    const {quid} = group.dataset;
    if (quid) {
      return this.byId.get("q" + quid.toLowerCase());
    }
    const title = group.querySelector(":scope > title");
    return title && group.querySelector(":scope > rect") ? this.named(title.textContent) : undefined;
  }

  at(number) {
    return this.elements[number];
  }

  /** The names from the model's packages down. */
  qualified(element) {
    if (element.kind === "other" || element.kind === "model") {
      return element.name;
    }
    const names = [];
    for (let at = element; at && at.kind !== "model"; at = at.owner) {
      names.push(at.name);
    }
    return names.reverse().join("::");
  }

  /** The elements around one, from the outside. */
  path(element) {
    const path = [];
    for (let at = element.owner; at && at.kind !== "model"; at = at.owner) {
      path.push(at);
    }
    return path.reverse();
  }

  /** The element whose page shows this one. */
  pageOf(element) {
    while (element.owner && !hasPage(element)) {
      element = element.owner;
    }
    return element;
  }

  /** The element of that qualified name; a class before an attribute. Names are found by hashes: deep ones are long. */
  named(qualified) {
    const add = (hash, text) => {
      for (let i = 0; i < text.length; i++) {
        hash = (Math.imul(hash, 31) + text.charCodeAt(i)) | 0;
      }
      return hash;
    };
    if (!this.byName) {
      this.byName = new Map();
      const hashes = new Array(this.elements.length).fill(0); // of the names with "::" behind them
      this.elements.forEach((element, number) => { // an owner precedes what it owns
        if (element && element !== this.root) {
          const own = add(hashes[element.owner.json.id], element.name);
          hashes[number] = add(own, "::");
          const list = this.byName.get(own);
          if (list) {
            list.push(element);
          } else {
            this.byName.set(own, [element]);
          }
        }
      });
    }
    const found = (this.byName.get(add(0, qualified)) || []).filter((element) => element.name);
    found.sort((a, b) => KIND_ORDER.indexOf(a.kind) - KIND_ORDER.indexOf(b.kind));
    return found.find((element) => this.qualified(element) === qualified);
  }

  /** The class that the name of a type means, or null. */
  classOfType(number) {
    return this.meant.has(number) ? this.at(this.meant.get(number)) : null;
  }

  /** What an element is referred to by: [how, referring element], in the document's order. */
  referrers(element) {
    this.index();
    return this.referrersOf.get(element) || [];
  }
  /** Lists of pairs of a relation element and the class at its other end. */
  supertypes(element) {
    this.index();
    return this.up.get(element) || [];
  }
  subtypes(element) {
    this.index();
    return this.down.get(element) || [];
  }
  associations(element) {
    this.index();
    return this.ends.get(element) || [];
  }
  /** The diagrams that the import found it on, and those whose pictures show it: by its identifier alone. */
  diagramsOf(element) {
    this.index();
    const found = new Set(this.shownOn.get(element));
    const mark = ` data-quid="${element.json.quid}"`;
    for (const [diagram, block] of this.pictures) {
      if (diagram !== element && element.json.quid && block.textContent.includes(mark)) {
        found.add(diagram);
      }
    }
    return [...found];
  }

  /** All references, the other way round; made when first asked for. */
  index() {
    if (this.referrersOf) {
      return;
    }
    this.referrersOf = new Map();
    this.up = new Map();
    this.down = new Map();
    this.ends = new Map();
    this.shownOn = new Map();
    const put = (map, key, value) => {
      const list = map.get(key);
      if (list) {
        list.push(value);
      } else {
        map.set(key, [value]);
      }
    };
    const refer = (number, how, by) => {
      const target = number && this.at(number);
      if (target) {
        put(this.referrersOf, target, [how, by]);
      }
      const meant = number && this.classOfType(number);
      if (meant) {
        put(this.referrersOf, meant, [how, by]);
      }
    };
    for (const element of this.elements) {
      if (!element) {
        continue;
      }
      const json = element.json;
      switch (element.kind) {
        case "attribute": refer(json.type, "type of", element); break;
        case "argument": refer(json.type, "type of", element); break;
        case "operation": refer(json.returnType, "result of", element); break;
        case "type": refer(json.derivedFrom, "base of", element); break;
        case "role":
          refer(json.class, "end of", element);
          if (json.class && this.at(json.class)) {
            put(this.ends, this.at(json.class), element);
          }
          break;
        case "generalization":
          for (const sub of json.subtypes || []) {
            for (const sup of json.supertypes || []) {
              if (sub !== sup) {
                put(this.up, this.at(sub), [element, this.at(sup)]);
                put(this.down, this.at(sup), [element, this.at(sub)]);
              }
            }
          }
          break;
        case "realization":
          refer(json.specificationClass, "realized by", this.at(json.realizationClass) || element);
          refer(json.realizationClass, "realizes", this.at(json.specificationClass) || element);
          break;
        case "dependency":
          refer(json.supplier, "used by", this.at(json.client) || element);
          refer(json.client, "uses", this.at(json.supplier) || element);
          break;
        case "key":
          for (const attribute of json.attributes || []) {
            refer(attribute, "part of", element);
          }
          refer(json.candidateKey, "referred to by", element);
          break;
        case "diagram":
          for (const shown of new Set(json.elements || [])) {
            put(this.shownOn, this.at(shown), element);
          }
          break;
      }
    }
  }

  /** All supertypes, nearest first, each once. */
  ancestors(element) {
    const found = new Set([element]);
    for (const at of found) { // which grows meanwhile
      for (const [, sup] of this.supertypes(at)) {
        found.add(sup);
      }
    }
    found.delete(element);
    return [...found];
  }

  /** The file with that number, which the JSON document names too; nothing for the model's own. */
  unit(file) {
    return file > 0 ? this.page.files[file] : "";
  }

  /** "file:line" of an element, as far as it is known. */
  place(element) {
    const {file, line} = element.json;
    return line ? `${file || this.file}:${line}` : "";
  }
  entryPlace(entry) {
    return `${this.page.files[entry.file]}:${entry.line}`;
  }
}

/** "State_Transition" as "state transition". */
function kindInWords(kind) {
  return kind.replace(/_/g, " ").replace(/([a-z])([A-Z])/g, "$1 $2").toLowerCase();
}
