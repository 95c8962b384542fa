"use strict";
// The page as a whole: address, search, keys.

const KEYS = [
  ["/", "search"], ["Enter", "open the first hit"], ["Esc", "leave the search, or close this list"],
  ["↑ ↓", "move in the tree and among hits"], ["← →", "close and open a package in the tree"],
  ["t", "go to the tree"], ["h", "go to the start"],
  ["+ − 0", "in a diagram: larger, smaller, all of it; with the mouse: Ctrl and wheel, or drag"], ["?", "show this list"],
];

/** Goes to an address as a click on a link does; set when the page starts. */
let follow = null;

async function start() {
  const [modelJson, pageJson] = await Promise.all([readBlock("petal-model"), readBlock("petal-page")]);
  const model = new Model(modelJson.model ? modelJson : {model: {id: 1}}, pageJson);
  const get = (id) => document.getElementById(id);
  const main = get("main");
  const field = get("search");
  const shell = get("shell");
  const pages = new Pages(model);
  const tree = new Tree(model, get("tree"));
  const hits = new Hits(model, new Search(model), get("hits"), get("filters"), get("status"));
  const scrolled = new Map(); // by address: where a reader was
  let address = null;
  let isClicked = false;

  get("home").textContent = shownName(model.root);
  get("keys").replaceChildren(...KEYS.flatMap(([key, what]) => [h("dt", null, h("kbd", null, key)), h("dd", null, what)]));

  const show = () => {
    const hash = location.hash.slice(1);
    if (address !== null) {
      scrolled.set(address, scrollY);
    }
    address = hash;
    const page = pages.at(model.byId.has(hash) ? hash : hash.startsWith("/") ? hash : decoded(hash));
    const content = [page.content].flat(Infinity).filter((child) => child);
    main.replaceChildren(...content);
    document.title = page.title;
    tree.select(page.element);
    shell.classList.remove("menu");
    get("menu").setAttribute("aria-expanded", "false");
    const part = page.part && mark(main, page.part);
    if (part) {
      part.scrollIntoView({block: "center"});
    } else {
      scrollTo(0, isClicked ? 0 : scrolled.get(hash) || 0);
    }
    isClicked = false;
  };
  addEventListener("hashchange", show);

  follow = (href) => {
    isClicked = true;
    if (href === location.hash) {
      show(); // the address stays, so nothing else would
    } else {
      location.hash = href;
    }
  };
  document.addEventListener("click", (event) => {
    const target = event.target.closest("a[href]");
    if (target && !event.ctrlKey && !event.metaKey && !event.shiftKey) {
      event.preventDefault();
      if (target.closest("#hits")) {
        leaveSearch(false);
      }
      follow(target.getAttribute("href"));
    }
  });

  const leaveSearch = (isEmptied) => {
    if (isEmptied) {
      field.value = "";
    }
    shell.classList.remove("searching", "menu");
  };
  const seek = () => {
    const isSearching = field.value.trim() !== "";
    shell.classList.toggle("searching", isSearching);
    if (isSearching) {
      hits.find(field.value);
    }
  };
  field.addEventListener("input", seek);
  field.addEventListener("focus", seek);
  field.addEventListener("keydown", (event) => {
    if (event.key === "Enter" && hits.hits.length > 0 && field.value.trim()) {
      event.preventDefault();
      leaveSearch(false);
      field.blur();
      follow(hrefOf(hits.hits[0]));
    } else if (event.key === "ArrowDown" && hits.hits.length > 0) {
      event.preventDefault();
      focusRow(hits.list, 0);
    }
  });
  get("form").addEventListener("submit", (event) => event.preventDefault());
  get("menu").addEventListener("click", () => {
    const isOpen = shell.classList.toggle("menu");
    leaveSearchFor(isOpen);
    get("menu").setAttribute("aria-expanded", String(isOpen));
    tree.list.render(true);
  });
  const leaveSearchFor = (isOpen) => isOpen && shell.classList.remove("searching");
  const help = get("help");
  get("ask").addEventListener("click", () => help.showModal());
  get("close").addEventListener("click", () => help.close());

  document.addEventListener("keydown", (event) => {
    if (event.ctrlKey || event.metaKey || event.altKey || help.open) {
      return;
    }
    if (event.key === "Escape") {
      leaveSearch(true);
      field.blur();
      return;
    }
    if (event.target.matches("input, textarea")) {
      return;
    }
    const act = {
      "/": () => { field.focus(); field.select(); },
      "?": () => help.showModal(),
      "t": () => { leaveSearch(true); focusRow(tree.list, Math.max(0, tree.rows.findIndex((row) => row.element === tree.current))); },
      "h": () => { location.hash = ""; },
    }[event.key];
    if (act) {
      event.preventDefault();
      act();
    }
  });

  // Long lists are printed whole, as far as that is of use.
  addEventListener("beforeprint", () => {
    for (const box of main.querySelectorAll(".long")) {
      box.list.around = 2000;
      box.list.render(true);
    }
  });
  addEventListener("afterprint", () => {
    for (const box of main.querySelectorAll(".long")) {
      box.list.around = 12;
      box.list.render(true);
    }
  });

  show();
  shell.hidden = false;
  tree.list.render(true);
  seek();
}

/** Marks the row of a part of the page's element, if it is rendered or can be. */
function mark(main, part) {
  const find = () => [...main.querySelectorAll("[data-id]")].find((row) => row.dataset.id === part.id);
  let row = find();
  if (!row) {
    for (const box of main.querySelectorAll(".long")) {
      const index = box.list.items.indexOf(part);
      if (index >= 0) {
        box.list.show(box.list.items);
        box.scrollTop = index * box.list.height;
        box.list.render(true);
        row = find();
      }
    }
  }
  if (row) {
    row.classList.add("marked");
  }
  return row;
}

start();
