"use strict";
// A diagram of the file as its author drew it: parsed when it is first shown, with zoom and pan.

const UNITS_PER_PIXEL = 300 / 96;

class Picture {
  /** `block` holds SVG; `targetOf(group)` says which element a group of the picture shows, if any. */
  constructor(block, name, targetOf) {
    const parsed = new DOMParser().parseFromString(block.textContent, "image/svg+xml").documentElement;
    this.svg = document.importNode(parsed, true);
    this.whole = this.svg.getAttribute("viewBox").split(" ").map(Number);
    this.view = [...this.whole];
    this.targetOf = targetOf;
    this.svg.setAttribute("role", "group");
    this.svg.setAttribute("tabindex", "0");
    this.svg.setAttribute("aria-label", name);
    this.svg.style.aspectRatio = `${this.whole[2]} / ${this.whole[3]}`;
    this.svg.style.maxWidth = Math.ceil(this.whole[2] / UNITS_PER_PIXEL * 1.25) + "px";
    for (const group of this.svg.querySelectorAll("g[data-view]")) {
      const target = targetOf(group);
      if (target) {
        group.classList.add("target");
        if (group.querySelector(":scope > rect")) {
          group.setAttribute("tabindex", "0");
          group.setAttribute("role", "link");
        }
      }
    }
    const button = (text, label, act) => h("button", {type: "button", "aria-label": label, title: label, click: act}, text);
    this.element = h("figure", {class: "picture"},
      h("div", {class: "tools"}, button("+", "Larger", () => this.zoom(0.8)), button("−", "Smaller", () => this.zoom(1.25)),
        button("⤢", "All of it", () => this.fit())),
      this.svg);
    this.listen();
  }

  listen() {
    const {svg} = this;
    const pointers = new Map();
    let isDragged = false;
    svg.addEventListener("click", (event) => {
      if (!isDragged) {
        this.open(event.target);
      }
    });
    this.element.addEventListener("keydown", (event) => {
      const zoom = {"+": 0.8, "-": 1.25}[event.key];
      const pan = {ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1]}[event.key];
      if (event.key === "Enter") {
        this.open(event.target);
      } else if (pan && svg.classList.contains("zoomed")) {
        event.preventDefault();
        this.view[0] += pan[0] * this.view[2] / 8;
        this.view[1] += pan[1] * this.view[3] / 8;
        this.show();
      } else if (zoom) {
        this.zoom(zoom);
      } else if (event.key === "0") {
        this.fit();
      }
    });
    svg.addEventListener("focusin", (event) => { // a box that has got the focus comes into sight
      const isByKey = event.target !== svg && event.target.matches(":focus-visible");
      if (isByKey && svg.classList.contains("zoomed")) {
        const box = event.target.getBBox();
        this.view[0] = box.x + box.width / 2 - this.view[2] / 2;
        this.view[1] = box.y + box.height / 2 - this.view[3] / 2;
        this.show();
      }
    });
    svg.addEventListener("wheel", (event) => {
      if (event.ctrlKey || event.metaKey) { // else the page scrolls
        event.preventDefault();
        this.zoom(event.deltaY > 0 ? 1.15 : 1 / 1.15, event);
      }
    }, {passive: false});
    svg.addEventListener("pointerdown", (event) => {
      isDragged = false;
      pointers.set(event.pointerId, event);
    });
    addEventListener("pointerup", (event) => pointers.delete(event.pointerId));
    addEventListener("pointercancel", (event) => pointers.delete(event.pointerId));
    svg.addEventListener("pointermove", (event) => {
      const before = pointers.get(event.pointerId);
      if (!before) {
        return;
      }
      const others = [...pointers.values()].filter((one) => one.pointerId !== event.pointerId);
      if (others.length === 1) { // two fingers
        const distance = (a, b) => Math.hypot(a.clientX - b.clientX, a.clientY - b.clientY) || 1;
        this.zoom(distance(before, others[0]) / distance(event, others[0]), event);
        isDragged = true;
      } else if (isDragged || Math.hypot(event.clientX - before.clientX, event.clientY - before.clientY) > 5) {
        const scale = this.view[2] / svg.clientWidth;
        this.view[0] -= (event.clientX - before.clientX) * scale;
        this.view[1] -= (event.clientY - before.clientY) * scale;
        isDragged = true;
        this.show();
      } else {
        return;
      }
      pointers.set(event.pointerId, event);
    });
  }

  open(at) {
    const group = at.closest("g.target");
    const target = group && this.targetOf(group);
    if (target) {
      follow(hrefOf(target));
    }
  }

  /** About a point of the screen, else about the middle. */
  zoom(factor, at) {
    const box = this.svg.getBoundingClientRect();
    const x = at ? (at.clientX - box.left) / box.width : 0.5;
    const y = at ? (at.clientY - box.top) / box.height : 0.5;
    const width = Math.min(Math.max(this.view[2] * factor, this.whole[2] / 60), this.whole[2] * 2);
    const height = width * this.whole[3] / this.whole[2];
    this.view = [this.view[0] + (this.view[2] - width) * x, this.view[1] + (this.view[3] - height) * y, width, height];
    this.show();
  }
  fit() {
    this.view = [...this.whole];
    this.show();
  }
  show() {
    this.svg.setAttribute("viewBox", this.view.join(" "));
    this.svg.classList.toggle("zoomed", this.view[2] < this.whole[2] * 0.99);
  }
}
