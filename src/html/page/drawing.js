"use strict";
// A drawing of a class among its neighbours, for classes that no diagram shows.

const BOX = {height: 34, gap: 14, most: 6, column: 230, letter: 7.2, width: 180};

function drawNeighbours(model, element) {
  const seen = new Set([element]);
  const take = (list) => {
    const found = [];
    for (const one of list) {
      if (one && !seen.has(one)) {
        seen.add(one);
        found.push(one);
      }
    }
    return found;
  };
  const groups = {
    above: take(model.supertypes(element).map(([, one]) => one)),
    below: take(model.subtypes(element).map(([, one]) => one)),
    right: take([...otherEnds(model, element), ...usedBy(model, element)]),
    left: take(model.referrers(element).map(([, by]) => classAround(by))),
  };
  const sideCount = (group) => Math.min(group.length, BOX.most) + (group.length > BOX.most ? 1 : 0);
  const rowsCount = Math.max(sideCount(groups.left), sideCount(groups.right), 1);
  const middle = rowsCount * (BOX.height + BOX.gap);
  const top = groups.above.length > 0 ? BOX.height + 46 : 0;
  const bottom = groups.below.length > 0 ? BOX.height + 46 : 0;
  const across = Math.max(sideCount(groups.above), sideCount(groups.below)) * (BOX.width + BOX.gap);
  const width = Math.max(across, BOX.width + (groups.left.length > 0 ? BOX.column : 0) +
                         (groups.right.length > 0 ? BOX.column : 0)) + 8;
  const height = top + middle + bottom + 8;
  let x = (width - BOX.width) / 2;
  if (groups.left.length === 0 && groups.right.length > 0) {
    x = Math.max(4, x - BOX.column / 2);
  } else if (groups.right.length === 0 && groups.left.length > 0) {
    x = Math.min(width - BOX.width - 4, x + BOX.column / 2);
  }
  const own = {x, y: 4 + top + (middle - BOX.height) / 2};
  const lines = svg("g", {class: "lines"});
  const boxes = svg("g", null);
  const centre = {x: own.x + BOX.width / 2, y: own.y + BOX.height / 2};
  const place = (one, at, rest) => boxes.append(neighbour(model, one, at, rest));
  const column = (group, left, side) => {
    const count = sideCount(group);
    const start = 4 + top + (middle - count * (BOX.height + BOX.gap) + BOX.gap) / 2;
    for (let i = 0; i < count; i++) {
      const at = {x: left, y: start + i * (BOX.height + BOX.gap)};
      const from = side === "left" ? at.x + BOX.width : at.x;
      const to = side === "left" ? own.x : own.x + BOX.width;
      lines.append(svg("line", {x1: from, y1: at.y + BOX.height / 2, x2: to, y2: centre.y}));
      place(group[i], at, i === BOX.most ? group.length - BOX.most : 0);
    }
  };
  const row = (group, y, isAbove) => {
    const count = sideCount(group);
    const start = Math.min(Math.max(centre.x - (count * (BOX.width + BOX.gap) - BOX.gap) / 2, 4),
                           width - count * (BOX.width + BOX.gap) + BOX.gap - 4);
    const bar = isAbove ? own.y - 20 : own.y + BOX.height + 26;
    for (let i = 0; i < count; i++) {
      const at = {x: start + i * (BOX.width + BOX.gap), y};
      const edge = isAbove ? y + BOX.height + 12 : y;
      const middleOf = at.x + BOX.width / 2;
      lines.append(svg("polyline", {points: `${middleOf},${edge} ${middleOf},${bar} ${centre.x},${bar} ${centre.x},` +
                                            `${isAbove ? own.y : own.y + BOX.height + 12}`}));
      if (isAbove) {
        lines.append(triangle(middleOf, y + BOX.height));
      }
      place(group[i], at, i === BOX.most ? group.length - BOX.most : 0);
    }
    if (!isAbove) {
      lines.append(triangle(centre.x, own.y + BOX.height));
    }
  };
  column(groups.left, own.x - BOX.column, "left");
  column(groups.right, own.x + BOX.column, "right");
  if (groups.above.length > 0) {
    row(groups.above, 4, true);
  }
  if (groups.below.length > 0) {
    row(groups.below, height - BOX.height - 4, false);
  }
  place(element, own, 0);
  boxes.lastChild.classList.add("own");
  const picture = svg("svg", {class: "neighbours", viewBox: `0 0 ${width} ${height}`, role: "img",
                              "aria-label": `${shownName(element)} and its neighbours`}, lines, boxes);
  picture.style.maxWidth = width + "px";
  return picture;
}

function triangle(x, y) {
  return svg("polygon", {points: `${x},${y} ${x - 7},${y + 12} ${x + 7},${y + 12}`});
}

function neighbour(model, element, at, rest) {
  const most = Math.floor((BOX.width - 16) / BOX.letter);
  const name = rest > 0 ? `and ${rest} more` : shownName(element);
  const text = name.length > most ? name.slice(0, most - 1) + "…" : name;
  const box = svg("g", {class: "box"}, svg("title", null, rest > 0 ? name : model.qualified(element)),
                  svg("rect", {x: at.x, y: at.y, width: BOX.width, height: BOX.height, rx: 4}),
                  svg("text", {x: at.x + BOX.width / 2, y: at.y + BOX.height / 2 + 5, "text-anchor": "middle"}, text));
  return rest > 0 ? box : svg("a", {href: hrefOf(element)}, box);
}

/** The class that an attribute, an operation, an argument or a role belongs to or, for a role, leads from. */
function classAround(element) {
  if (element.kind === "role") {
    return null; // `otherEnds` has it
  }
  while (element && element.kind !== "class") {
    element = element.owner;
  }
  return element;
}

function otherEnds(model, element) {
  return model.associations(element).flatMap((role) => (role.owner.json.roles || [])
    .filter((json) => json.id !== role.json.id && json.class).map((json) => model.at(json.class)));
}

/** The classes that types of attributes and operations of a class mean. */
function usedBy(model, element) {
  const types = (element.json.attributes || []).map((json) => json.type);
  for (const operation of element.json.operations || []) {
    types.push(operation.returnType, ...(operation.arguments || []).map((json) => json.type));
  }
  return types.map((type) => type && model.classOfType(type));
}
