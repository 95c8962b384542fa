"use strict";
// The index of a folder: its models, and a search for classes in all of them.

async function startFolder() {
  const get = (id) => document.getElementById(id);
  const models = (await readBlock("petal-index"))
    .map(([file, link, state, text, {objects, losses, names = []}]) => ({file, link, state, text, objects, losses, names, classes: 0}));
  const entries = [];
  for (const model of models) {
    entries.push({href: model.link, name: model.file, where: `model, ${model.state}`, folded: folded(model.file), kind: "model"});
    model.names.forEach(([id, name, owner]) => {
      if (id) {
        model.classes++;
        entries.push({href: `${model.link}#${id}`, name, folded: folded(name), kind: "class", model, owner});
      }
    });
  }
  const count = (number, one, many) => `${number.toLocaleString("en")} ${number === 1 ? one : many}`;
  const modelRow = (model) => h("div", {class: "item"},
    h("div", {class: "what"}, badge({kind: "model"}), model.link ? h("a", {href: model.link}, model.file) : model.file),
    h("div", {class: "where"}, [model.state, model.text, model.objects === undefined ? null
      : `${count(model.objects, "object", "objects")}, ${count(model.losses, "loss", "losses")}`].filter(Boolean).join(": ")),
    placed(model.link ? count(model.classes, "class", "classes") : ""));
  const tiles = [...new Set(models.map((model) => model.state))]
    .map((state) => [models.filter((model) => model.state === state).length, state]);
  const classes = models.reduce((sum, model) => sum + model.classes, 0);
  get("models").append(h("h1", null, "Models"),
    h("div", {class: "tiles"}, [...tiles, [classes, classes === 1 ? "class" : "classes"]].map(([number, word]) =>
      h("div", {class: "tile"}, h("b", null, number.toLocaleString("en")), h("span", null, word)))),
    rows(models, modelRow));

  const field = get("search");
  const qualified = ({name, owner, model}) => {
    const names = [name];
    for (; owner >= 0; owner = model.names[owner][2]) {
      names.push(model.names[owner][1]);
    }
    return names.reverse().join("::");
  };
  const list = new VirtualList(get("hits"), 46, (entry) => {
    const where = entry.where || `${entry.model.file}: ${qualified(entry)}`;
    return h("div", {class: "row hit", role: "listitem"}, badge({kind: entry.kind}),
             h("a", {href: entry.href || null, title: where}, h("span", {class: "name"}, entry.name), h("small", null, where)));
  });
  const find = (query) => {
    const whole = folded(query);
    const ranks = [[], [], [], []];
    for (const entry of entries) {
      const at = entry.folded.indexOf(whole);
      const rank = at >= 0 ? (entry.folded === whole ? 0 : at === 0 ? 2 : 3)
        : isInitials(whole, entry.name) ? 1 : -1;
      if (rank >= 0) {
        ranks[rank].push(entry);
      }
    }
    return ranks.flat();
  };
  const seek = () => {
    const isSearching = field.value.trim() !== "";
    get("models").hidden = isSearching;
    get("hits").hidden = !isSearching;
    list.show(isSearching ? find(field.value) : []);
  };
  field.addEventListener("input", seek);
  field.addEventListener("keydown", (event) => {
    const first = list.items.find((entry) => entry.href);
    if (event.key === "Enter" && first && field.value.trim()) {
      event.preventDefault();
      location.href = first.href;
    }
  });
  get("form").addEventListener("submit", (event) => event.preventDefault());
  document.addEventListener("keydown", (event) => {
    if (event.key === "/" && event.target !== field) {
      event.preventDefault();
      field.focus();
    } else if (event.key === "Escape") {
      field.value = "";
      seek();
    }
  });
  get("shell").hidden = false;
  seek();
}

startFolder();
