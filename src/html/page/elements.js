"use strict";
// Small parts that pages are built of. Texts of a model become text nodes and attributes, never markup.

const SVG = "http://www.w3.org/2000/svg";

/** An HTML element: properties that are functions are listeners, `class` and `data-`, `aria-` … are attributes. */
function h(tag, properties, ...children) {
  const element = document.createElement(tag);
  fill(element, properties, children);
  return element;
}
function svg(tag, properties, ...children) {
  const element = document.createElementNS(SVG, tag);
  fill(element, properties, children);
  return element;
}
function fill(element, properties, children) {
  for (const [name, value] of Object.entries(properties || {})) {
    if (typeof value === "function") {
      element.addEventListener(name, value);
    } else if (value !== undefined && value !== null && value !== false) {
      element.setAttribute(name, value === true ? "" : value);
    }
  }
  for (const child of children.flat(Infinity)) {
    if (child !== null && child !== undefined && child !== false && child !== "") {
      element.append(child);
    }
  }
}

/** A file and line; when there is too little room the beginning goes. */
const placed = (text) => h("div", {class: "place", title: text || ""}, h("bdi", {}, text));
const hrefOf = (element) => "#" + element.id;
const isNameless = (element) => !element.name.trim() && !element.label;
const shownName = (element) => element.name.trim() ? element.name : element.label || "(no name)";
const LETTERS = {class: "C", package: "P", diagram: "D", attribute: "a", operation: "o", type: "T", association: "↔",
                 role: "r", key: "k", argument: "p", generalization: "△", realization: "△", dependency: "⇢",
                 interface: "I", enumeration: "E", datatype: "D", primitive: "T", actor: "A", boundary: "B",
                 control: "K", other: "×", model: "M"};

/** The small letter that says what an element is. */
function badge(element) {
  const word = element.kind === "other" ? element.word : element.word || element.kind;
  const kind = element.kind === "other" && word.endsWith("diagram") ? "diagram" : element.kind;
  return h("span", {class: `badge k-${kind}`, title: word, "aria-hidden": "true"},
           LETTERS[kind === "class" ? element.word : kind] || LETTERS[kind]);
}
function link(element, text) {
  return h("a", {href: hrefOf(element), class: isNameless(element) && !text ? "nameless" : null},
           text || shownName(element));
}

/**
 * A list that renders only the rows in sight, and some around them. `box` scrolls; `row(item, index)` makes a row of
 * the given height.
 */
class VirtualList {
  constructor(box, height, row) {
    this.box = box;
    this.height = height;
    this.row = row;
    this.items = [];
    this.around = 12;
    this.space = h("div", {class: "space", role: "presentation"});
    this.rows = h("div", {class: "rows", role: "presentation"});
    this.space.append(this.rows);
    box.append(this.space);
    box.addEventListener("scroll", () => this.render(), {passive: true});
    new ResizeObserver(() => this.render()).observe(box);
  }
  show(items) {
    this.items = items;
    this.space.style.height = items.length * this.height + "px";
    this.box.scrollTop = 0;
    this.render(true);
  }
  /** Again, where it is. */
  refresh(items) {
    this.items = items;
    this.space.style.height = items.length * this.height + "px";
    this.render(true);
  }
  render(isChanged) {
    const first = Math.max(0, Math.floor(this.box.scrollTop / this.height) - this.around);
    const seen = Math.ceil((this.box.clientHeight || 600) / this.height);
    const last = Math.min(this.items.length, first + seen + 2 * this.around);
    if (!isChanged && first === this.first && last === this.last) {
      return;
    }
    this.first = first;
    this.last = last;
    this.rows.style.transform = `translateY(${first * this.height}px)`;
    const shown = this.items.slice(first, last).map((item, index) => this.row(item, first + index));
    this.rows.replaceChildren(...shown);
  }
  reveal(index) {
    const top = index * this.height;
    if (top < this.box.scrollTop || top + this.height > this.box.scrollTop + this.box.clientHeight) {
      this.box.scrollTop = Math.max(0, top - this.box.clientHeight / 2);
    }
    this.render();
  }
  rowAt(index) {
    return this.rows.children[index - this.first] || null;
  }
}

/** Rows of a page: all of them up to a number, else a box that scrolls. `row(item)` makes a row. */
function rows(items, row) {
  const most = 300;
  if (items.length <= most) {
    return h("div", {class: "list"}, items.map(row));
  }
  const box = h("div", {class: "list long", tabindex: "0"});
  const list = new VirtualList(box, 52, (item) => {
    const one = row(item);
    one.classList.add("fixed");
    return one;
  });
  list.items = items;
  box.list = list;
  queueMicrotask(() => list.show(items));
  return box;
}

/** A part of a page with a heading and a count; nothing for an empty list. */
function section(title, items, content) {
  if (items && items.length === 0) {
    return null;
  }
  return h("section", null, h("h2", null, title, items ? h("span", {class: "count"}, ` ${items.length}`) : null), content);
}
