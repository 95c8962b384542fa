"use strict";
// The tree of packages, and the hits of a search in its place. Both are lists of links.

class Tree {
  constructor(model, box) {
    this.model = model;
    this.box = box;
    this.open = new Set();
    this.current = null;
    this.list = new VirtualList(box, 28, (row) => this.makeRow(row));
    const top = model.root.json.packages || [];
    let shown = top.length;
    for (const json of top) { // the top is open as long as that leaves it on a screen
      const size = (json.packages || []).length + (json.elements || []).length;
      if ((shown += size) < 40) {
        this.open.add(model.at(json.id));
      }
    }
    if (top.length === 1) {
      this.open.add(model.at(top[0].id));
    }
    box.addEventListener("keydown", (event) => this.key(event));
    this.fill();
  }

  /** What is below a package: packages, diagrams, classes, and associations that have a name. */
  below(element) {
    const {model} = this;
    const of = (list) => (list || []).map((json) => model.at(json.id));
    const byName = (a, b) => a.name.localeCompare(b.name);
    if (element.kind !== "package") {
      return element.children || [];
    }
    const classes = of(element.json.elements).filter((one) => one.kind === "class").sort(byName);
    return [...of(element.json.packages), ...of(element.json.diagrams), ...classes];
  }

  roots() {
    const {model} = this;
    if (!this.top) {
      this.top = (model.root.json.packages || []).map((json) => model.at(json.id));
      const types = (model.root.json.types || []).map((json) => model.at(json.id));
      if (types.length > 0) {
        this.top.push({kind: "folder", name: "Types", id: "!types", children: types});
      }
      if (model.others.length > 0) {
        const byWord = new Map();
        for (const other of model.others) {
          if (!byWord.has(other.word)) {
            byWord.set(other.word, {kind: "folder", name: other.word, id: "!left", children: []});
          }
          byWord.get(other.word).children.push(other);
        }
        this.top.push({kind: "folder", name: "Not imported", id: "!left", children: [...byWord.values()]});
      }
    }
    return this.top;
  }

  fill() {
    this.rows = [];
    const waiting = this.roots().map((element) => [element, 1]).reverse();
    while (waiting.length > 0) {
      const [element, level] = waiting.pop();
      const isOpen = this.open.has(element);
      this.rows.push({element, level, isOpen});
      if (isOpen) {
        const below = this.below(element);
        for (let i = below.length - 1; i >= 0; i--) {
          waiting.push([below[i], level + 1]);
        }
      }
    }
    this.list.refresh(this.rows);
  }

  canOpen(element) {
    if (element.kind === "package") {
      const {packages, elements, diagrams} = element.json;
      return Boolean(packages || diagrams || (elements && elements.some((json) => json.kind === "class")));
    }
    return element.kind === "folder";
  }

  toggle(element) {
    if (!this.open.delete(element)) {
      this.open.add(element);
    }
    this.fill();
  }

  makeRow({element, level, isOpen}) {
    const canOpen = this.canOpen(element);
    const row = h("div", {
      class: "row" + (element === this.current ? " current" : ""), role: "treeitem", "aria-level": level,
      "aria-expanded": canOpen ? String(isOpen) : null, "aria-selected": String(element === this.current),
    },
    canOpen ? h("button", {class: "toggle", tabindex: "-1", "aria-label": isOpen ? "Close" : "Open",
                           click: () => this.toggle(element)}, isOpen ? "▾" : "▸")
      : h("span", {class: "toggle"}),
    element.kind === "folder" ? h("span", {class: "badge k-folder", "aria-hidden": "true"}, "…") : badge(element),
    h("a", {href: hrefOf(element), title: element.kind === "folder" ? null : this.model.qualified(element)}, shownName(element)));
    row.style.paddingLeft = Math.min(level - 1, 14) * 14 + "px";
    return row;
  }

  /** Opens what is around the element and scrolls to it. */
  select(element) {
    this.current = element;
    if (element) {
      for (const around of this.model.path(element)) {
        this.open.add(around);
      }
    }
    this.fill();
    const index = this.rows.findIndex((row) => row.element === element);
    if (index >= 0) {
      this.list.reveal(index);
    }
  }

  key(event) {
    const index = this.list.first + [...this.list.rows.children].findIndex((row) => row.contains(document.activeElement));
    if (index < this.list.first) {
      return;
    }
    const row = this.rows[index];
    let to = -1;
    if (event.key === "ArrowDown") {
      to = index + 1;
    } else if (event.key === "ArrowUp") {
      to = index - 1;
    } else if (event.key === "ArrowRight" && this.canOpen(row.element)) {
      to = row.isOpen ? index + 1 : index;
      if (!row.isOpen) {
        this.toggle(row.element);
      }
    } else if (event.key === "ArrowLeft") {
      to = index;
      if (row.isOpen) {
        this.toggle(row.element);
      } else {
        while (to > 0 && this.rows[to].level >= row.level) {
          to--;
        }
      }
    } else {
      return;
    }
    event.preventDefault();
    focusRow(this.list, to);
  }
}

function focusRow(list, index) {
  if (index < 0 || index >= list.items.length) {
    return;
  }
  list.reveal(index);
  const row = list.rowAt(index);
  const target = row && row.querySelector("a");
  if (target) {
    target.focus();
  }
}

/** The hits of a search, with a filter for each kind that has any. */
class Hits {
  constructor(model, search, box, filters, status) {
    Object.assign(this, {model, search, box, filters, status});
    this.kind = "";
    this.hits = [];
    this.list = new VirtualList(box, 46, (element) => this.makeRow(element));
    box.addEventListener("keydown", (event) => this.key(event));
  }
  makeRow(element) {
    const where = element.kind === "other" ? `${element.word}, not imported` : this.model.qualified(element);
    return h("div", {class: "row hit", role: "listitem"}, badge(element),
             h("a", {href: hrefOf(element), title: where}, h("span", {class: "name"}, shownName(element)),
               h("small", null, where)));
  }
  find(query) {
    this.query = query;
    let found = this.search.find(query, this.kind);
    if (this.kind && !found.counts[this.kind]) {
      this.kind = "";
      found = this.search.find(query, "");
    }
    this.hits = found.hits;
    this.list.show(found.hits);
    let total = 0;
    const filters = [];
    for (const kind of KIND_ORDER) {
      const count = found.counts[kind];
      if (count) {
        total += count;
        filters.push(this.filter(kind, KINDS[kind][count === 1 ? 0 : 1], count));
      }
    }
    this.status.textContent = total === 0 ? "Nothing found." : total === 1 ? "1 hit" : `${total} hits`;
    this.filters.replaceChildren(...(filters.length > 1 ? filters : []));
  }
  filter(kind, word, count) {
    return h("button", {type: "button", class: "filter", "aria-pressed": String(this.kind === kind), click: () => {
      this.kind = this.kind === kind ? "" : kind;
      this.find(this.query);
    }}, `${word} ${count}`);
  }
  key(event) {
    const at = [...this.list.rows.children].findIndex((row) => row.contains(document.activeElement));
    const step = {ArrowDown: 1, ArrowUp: -1}[event.key];
    if (at < 0 || !step) {
      return;
    }
    event.preventDefault();
    const to = this.list.first + at + step;
    if (to < 0) {
      document.querySelector("input[type=search]").focus();
    } else {
      focusRow(this.list, to);
    }
  }
}
