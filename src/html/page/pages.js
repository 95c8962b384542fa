"use strict";
// A page for each element: what it is, what it consists of, and what refers to it.

class Pages {
  constructor(model) {
    this.model = model;
  }

  /** The content for a place of the address, with the element that it is about, and that to be shown in it. */
  at(hash) {
    const {model} = this;
    const own = {"": () => this.home(), "!ledger": () => this.ledger(), "!left": () => this.left(),
                 "!types": () => this.types()};
    if (Object.hasOwn(own, hash)) {
      return {content: own[hash](), element: null, title: model.root.name || "Model"};
    }
    let element = model.byId.get(hash);
    if (!element && hash.startsWith("/")) {
      element = model.named(hash.slice(1)) || model.named(decoded(hash.slice(1)));
    }
    if (!element) {
      return {content: this.missing(hash), element: null, title: "Not found"};
    }
    if (element === model.root) {
      return {content: this.home(), element: null, title: model.root.name || "Model"};
    }
    const shown = model.pageOf(element);
    return {content: this.element(shown), element: shown, part: element === shown ? null : element,
            title: shownName(shown)};
  }

  missing(hash) {
    return [h("h1", null, "Not found"),
            h("p", null, "The model has no element ", h("code", null, decoded(hash)), "."),
            h("p", null, h("a", {href: "#"}, "Go to the start"))];
  }

  // The start, and pages of lists.

  home() {
    const {model} = this;
    const counts = {};
    for (const element of model.elements) {
      if (element) {
        counts[element.kind] = (counts[element.kind] || 0) + 1;
      }
    }
    const diagrams = [...new Set([...model.elements.filter((element) => element && element.kind === "diagram"), ...model.pictures.keys()])];
    counts.diagram = diagrams.length; // as in the list below: also those that are not imported
    const tiles = ["package", "class", "attribute", "operation", "association", "diagram", "type"].filter((kind) => counts[kind])
      .map((kind) => h("div", {class: "tile"}, h("b", null, counts[kind].toLocaleString("en")),
                       h("span", null, KINDS[kind][counts[kind] === 1 ? 0 : 1])));
    const packages = (model.root.json.packages || []).map((json) => model.at(json.id));
    const origin = (model.root.json.origins || [])[0] || {};
    const {ledger} = model.page;
    return [
      h("p", {class: "eyebrow"}, "Model"),
      h("h1", null, shownName(model.root)),
      this.documentation(model.root),
      h("div", {class: "tiles"}, tiles),
      this.facts([["File", model.file], ["Format", origin.sourceFormat], ["Encoding", origin.sourceEncoding],
                  ["Tool", origin.tool && [origin.tool.name, origin.tool.versions].filter(Boolean).join(" ")]]),
      section("Packages", packages, rows(packages, (one) => this.elementRow(one))),
      section("Diagrams", diagrams, rows(diagrams, (one) => this.elementRow(one))),
      ledger ? section("The import", null, h("div", null,
        h("p", {class: "note"}, model.losses.length === 0 ? "Nothing that the import supports was lost. "
          : `${ledger.totals[0]} objects and properties that the import supports were changed or lost. `,
          h("a", {href: "#!ledger"}, "What became of everything in the file")),
        model.others.length > 0 ? h("p", {class: "note"},
          `${model.others.length} further elements of the file are not part of the model. `,
          h("a", {href: "#!left"}, "Show them")) : null)) : null,
    ];
  }

  types() {
    const types = (this.model.root.json.types || []).map((json) => this.model.at(json.id));
    return [h("p", {class: "eyebrow"}, "Model"), h("h1", null, "Types"),
            section("All types", types, rows(types, (one) => this.elementRow(one)))];
  }

  left() {
    const {others} = this.model;
    const byKind = new Map();
    for (const other of others) {
      byKind.set(other.word, [...(byKind.get(other.word) || []), other]);
    }
    return [h("p", {class: "eyebrow"}, "In the file, not in the model"), h("h1", null, "Not imported"),
            h("p", {class: "note"}, "These elements are in the file. The imported model does not have them; each says why."),
            ...[...byKind].map(([word, list]) => section(capital(word), list, rows(list, (one) => this.elementRow(one))))];
  }

  ledger() {
    const {model} = this;
    const {ledger} = model.page;
    if (!ledger) {
      return [h("h1", null, "The import"), h("p", null, "Nothing is known of it.")];
    }
    const counts = (name, [imported, changed, dropped]) =>
      h("tr", null, h("th", {scope: "row"}, name), [imported, changed, dropped].map((count) => h("td", {class: "number"}, String(count))));
    const head = h("thead", null, h("tr", null, ["", "imported", "changed", "dropped"].map((word) =>
      h("th", {scope: "col", class: word ? "number" : null}, word))));
    const entryRow = (entry) => h("div", {class: "item"},
      h("div", {class: "what"}, h("b", null, entry.property ? `${entry.property} of ${entry.kind} ` : `${entry.kind} `), entry.name),
      h("div", {class: "where"}, `${["imported", "changed", "dropped"][entry.outcome]}: ${entry.reason}`),
      placed(model.entryPlace(entry)));
    const damages = ledger.damages.map(([file, line, text]) => ({file, line, text}));
    return [
      h("p", {class: "eyebrow"}, "The import"), h("h1", null, "What became of the file"),
      h("table", null, head, h("tbody", null, counts("objects", ledger.objects), counts("properties", ledger.properties))),
      this.facts([["Losses", String(ledger.totals[0])], ["Bytes that the encoding does not have", String(ledger.totals[1])],
                  ["Damages of the notation", String(ledger.totals[2])]]),
      section("Losses", model.losses, rows(model.losses, entryRow)),
      section("Damages", damages, rows(damages, (one) => h("div", {class: "item"}, h("div", {class: "what"}, one.text),
                                                            placed(model.entryPlace(one))))),
      section("Changed on purpose", model.changes, rows(model.changes, entryRow)),
      model.others.length > 0 ? h("p", null, h("a", {href: "#!left"}, `${model.others.length} elements that are not imported`)) : null,
      section("By kind", null, h("div", {class: "scroll"}, h("table", null, h("caption", null, "Objects of the file"), head.cloneNode(true),
        h("tbody", null, ledger.kinds.map(([name, ...numbers]) => counts(name, numbers.slice(0, 3))))))),
    ];
  }

  // One element.

  element(element) {
    const special = {class: "classParts", package: "packageParts", diagram: "diagramParts", type: "typeParts",
                     association: "associationParts", generalization: "relationParts", realization: "relationParts",
                     dependency: "relationParts", other: "otherParts"}[element.kind];
    return [this.head(element), this.documentation(element), ...this[special](element)];
  }

  head(element) {
    const {model} = this;
    const {json} = element;
    const word = element.kind === "class" && element.word !== "class" ? element.word : KINDS[element.kind][0];
    const flags = [
      element.kind === "other" ? "not part of the imported model" : null,
      json.category && json.category !== "class" ? kindInWords(json.category) : null,
      json.isAbstract && "abstract", json.isPersistent && "persistent", json.isAggregation && "aggregation",
      json.isVirtual && "virtual", json.isFriend && "friend", json.multiplicity && `multiplicity ${json.multiplicity}`,
    ].filter(Boolean);
    const path = model.path(element);
    const place = model.place(element);
    return h("header", {class: "head"},
      h("p", {class: "eyebrow"}, badge(element), element.kind === "other" ? element.word : word,
        json.stereotype ? h("span", {class: "stereotype"}, `«${json.stereotype}»`) : null,
        flags.map((flag) => h("span", {class: "flag"}, flag))),
      h("h1", {class: isNameless(element) ? "nameless" : null}, shownName(element)),
      h("p", {class: "path"}, path.flatMap((one) => [link(one, one.name || undefined), "::"]), element.name),
      place || json.quid ? h("p", {class: "place"}, place, json.quid ? h("span", {title: "The identifier in the file"}, ` · ${json.quid}`) : null) : null);
  }

  documentation(element) {
    const {json} = element;
    const texts = [json.description && h("div", {class: "text"}, json.description),
                   ...(json.notes || []).map((note) => h("div", {class: "text sticky"}, note))].filter(Boolean);
    return texts.length > 0 ? h("div", {class: "documentation"}, texts) : null;
  }

  facts(pairs) {
    const known = pairs.filter(([, value]) => value);
    return known.length === 0 ? null : h("dl", {class: "facts"}, known.flatMap(([name, value]) => [h("dt", null, name), h("dd", null, value)]));
  }

  /** The row of an element with a page of its own. */
  elementRow(element, how) {
    const qualified = element.kind === "other" ? [element.word, element.entry.reason].filter(Boolean).join(": ")
      : this.model.qualified(element.name || !element.owner ? element : element.owner); // of a nameless one what it is in
    return h("div", {class: "item", "data-id": element.id},
      h("div", {class: "what"}, badge(element), link(element), element.json.stereotype ? h("span", {class: "stereotype"}, `«${element.json.stereotype}»`) : null,
        how ? h("span", {class: "how"}, how) : null),
      h("div", {class: "where"}, qualified),
      placed(this.model.place(element)));
  }

  typeName(number) {
    if (!number) {
      return null;
    }
    const type = this.model.at(number);
    return type ? link(this.model.classOfType(number) || type, type.name || "(no name)") : null;
  }

  /** The row of an attribute, operation, key …: of what has no page of its own. */
  memberRow(element) {
    const {model} = this;
    const {json} = element;
    const sign = {public: "+", protected: "#", private: "−", implementation: "~"}[json.visibility] || "";
    const what = [sign ? h("span", {class: "sign", title: json.visibility}, sign) : null];
    const name = h("a", {href: hrefOf(element), class: "name" + (json.isStatic ? " static" : "")}, shownName(element));
    if (element.kind === "operation") {
      what.push(name, "(", (json.arguments || []).flatMap((one, index) =>
        [index > 0 ? ", " : "", h("span", {"data-id": model.at(one.id).id}, one.name, one.type ? [": ", this.typeName(one.type)] : "",
                                   one.initialValue ? ` = ${one.initialValue}` : "")]), ")",
        json.returnType ? [": ", this.typeName(json.returnType)] : "");
    } else if (element.kind === "key") {
      const attributes = (json.attributes || []).map((number) => model.at(number)).filter(Boolean);
      what.push(name, ": ", attributes.flatMap((one, index) => [index > 0 ? ", " : "", link(one)]));
      const candidate = json.candidateKey && model.at(json.candidateKey);
      if (candidate) {
        what.push(" → ", link(candidate), " of ", link(candidate.owner));
      }
    } else {
      what.push(name, json.type ? [": ", this.typeName(json.type)] : "", json.initialValue ? ` = ${json.initialValue}` : "");
    }
    const flags = [json.isStatic && "static", json.isDerived && "derived", json.isVirtual && "virtual", json.isFriend && "friend",
                   json.containment && {byValue: "by value", byReference: "by reference"}[json.containment],
                   element.kind === "key" && (json.isPrimary ? "primary key" : `${json.kind} key`)].filter(Boolean);
    const texts = [json.description, json.semantics && `Semantics: ${json.semantics}`, json.precondition && `Precondition: ${json.precondition}`,
                   json.postcondition && `Postcondition: ${json.postcondition}`, ...(json.notes || [])].filter(Boolean);
    return h("div", {class: "item member", "data-id": element.id},
      h("div", {class: "what"}, what, json.stereotype ? h("span", {class: "stereotype"}, `«${json.stereotype}»`) : null,
        flags.map((flag) => h("span", {class: "flag"}, flag))),
      h("div", {class: "where"}, model.qualified(element)),
      placed(model.place(element)),
      texts.length > 0 ? h("div", {class: "text"}, texts.join("\n")) : null);
  }

  classParts(element) {
    const {model} = this;
    const {json} = element;
    const of = (list) => (list || []).map((one) => model.at(one.id));
    const members = (title, list) => section(title, of(list), rows(of(list), (one) => this.memberRow(one)));
    const diagrams = model.diagramsOf(element);
    const supertypes = model.supertypes(element);
    const subtypes = model.subtypes(element);
    const associations = model.associations(element);
    const inherited = model.ancestors(element).filter((one) => one.json.attributes || one.json.operations);
    const referrers = model.referrers(element).filter(([, by]) => by.kind !== "role");
    const isLiteral = element.word === "enumeration";
    return [
      members(isLiteral ? "Literals" : "Attributes", json.attributes),
      members("Operations", json.operations),
      members("Template arguments", json.arguments),
      members("Keys", json.keys),
      section("Associations", associations, rows(associations, (role) => this.roleRow(role))),
      section("Supertypes", supertypes, rows(supertypes, ([relation, one]) => this.elementRow(one, relation.name))),
      section("Subtypes", subtypes, rows(subtypes, ([relation, one]) => this.elementRow(one, relation.name))),
      inherited.length === 0 ? null : section("Inherited members", inherited.flatMap((one) =>
        [...(one.json.attributes || []), ...(one.json.operations || [])]),
        h("div", null, inherited.map((one) => h("div", {class: "inherited"}, h("h3", null, "from ", link(one)),
          rows(of([...(one.json.attributes || []), ...(one.json.operations || [])]), (member) => this.memberRow(member)))))),
      section("Referred to by", referrers, rows(referrers, ([how, by]) => this.referrerRow(how, by))),
      this.onDiagrams(diagrams),
      diagrams.length === 0 ? section("Neighbours", null, h("div", {class: "picture"}, drawNeighbours(model, element))) : null,
    ];
  }

  referrerRow(how, by) {
    const {model} = this;
    if (hasPage(by)) {
      return this.elementRow(by, how);
    }
    return h("div", {class: "item"},
      h("div", {class: "what"}, badge(by), link(by), h("span", {class: "how"}, how)),
      h("div", {class: "where"}, model.qualified(by)), placed(model.place(by)));
  }

  /** An association, seen from the class of one of its roles. */
  roleRow(role) {
    const {model} = this;
    const association = role.owner;
    const others = (association.json.roles || []).filter((json) => json.id !== role.json.id);
    const end = (json) => [
      json.class && model.at(json.class) ? link(model.at(json.class)) : "(no class)",
      json.name ? h("span", {class: "role"}, ` ${json.name}`) : "",
      json.multiplicity ? h("span", {class: "multiplicity"}, ` [${json.multiplicity}]`) : ""];
    const flags = [role.json.isAggregate && "whole", others.some((json) => json.isAggregate) && "part",
                   others.some((json) => json.isNavigable) && "navigable"].filter(Boolean);
    return h("div", {class: "item member", "data-id": role.id},
      h("div", {class: "what"}, badge(association), others.length > 0 ? others.flatMap((json, index) => [index > 0 ? ", " : "", ...end(json)]) : "(no other end)",
        flags.map((flag) => h("span", {class: "flag"}, flag))),
      h("div", {class: "where"}, h("a", {href: hrefOf(association)}, association.name ? model.qualified(association) : "association"),
        role.json.name || role.json.multiplicity ? [" · this end:", ...end(role.json).slice(1)] : ""),
      placed(model.place(association)),
      others.map((json) => json.description && h("div", {class: "text"}, json.description)));
  }

  packageParts(element) {
    const {model} = this;
    const of = (list) => (list || []).map((one) => model.at(one.id));
    const elements = of(element.json.elements);
    const part = (title, list) => section(title, list, rows(list, (one) => this.elementRow(one)));
    return [part("Packages", of(element.json.packages)), part("Diagrams", of(element.json.diagrams)),
            part("Classes", elements.filter((one) => one.kind === "class")),
            part("Associations", elements.filter((one) => one.kind === "association").map((one) => one)),
            part("Other relations", elements.filter((one) => one.kind !== "class" && one.kind !== "association"))];
  }

  diagramParts(element) {
    const {model} = this;
    const shown = (element.json.elements || []).map((number) => model.at(number)).filter(Boolean);
    return [this.picture(element), section("Elements", shown, rows(shown, (one) => this.elementRow(one)))];
  }

  typeParts(element) {
    const {model} = this;
    const {json} = element;
    const values = json.values || [];
    const referrers = model.referrers(element);
    const meant = model.classOfType(json.id);
    const base = json.derivedFrom && model.at(json.derivedFrom);
    return [
      this.facts([["Data type", json.dataType], ["Length", json.length && String(json.length)], ["Scale", json.scale && String(json.scale)],
                  ["Physical name", json.physicalName], ["Derived from", base && link(base)], ["The class of that name", meant && link(meant)]]),
      section("Values", values, rows(values, (one) => h("div", {class: "item"}, h("div", {class: "what"}, one.name, one.value ? ` = ${one.value}` : "")))),
      section("Referred to by", referrers, rows(referrers, ([how, by]) => this.referrerRow(how, by))),
    ];
  }

  associationParts(element) {
    const {model} = this;
    const roles = (element.json.roles || []).map((json) => model.at(json.id));
    return [
      section("Ends", roles, rows(roles, (role) => {
        const {json} = role;
        const flags = [json.isAggregate && "whole", json.isNavigable && "navigable", json.isStatic && "static", json.isFriend && "friend", json.isSource && "source",
                       json.containment && {byValue: "by value", byReference: "by reference"}[json.containment]].filter(Boolean);
        const target = json.class && model.at(json.class);
        return h("div", {class: "item member", "data-id": role.id},
          h("div", {class: "what"}, badge(role), h("a", {href: hrefOf(role), class: "name"}, shownName(role)), ": ",
            target ? link(target) : "(no class)", json.multiplicity ? h("span", {class: "multiplicity"}, ` [${json.multiplicity}]`) : "",
            flags.map((flag) => h("span", {class: "flag"}, flag))),
          h("div", {class: "where"}, target ? model.qualified(target) : ""), placed(model.place(role)),
          json.description ? h("div", {class: "text"}, json.description) : null);
      })),
      this.onDiagrams(model.diagramsOf(element)),
    ];
  }

  relationParts(element) {
    const {model} = this;
    const {json} = element;
    const of = (...numbers) => numbers.flat().map((number) => number && model.at(number)).filter(Boolean);
    const ends = {generalization: [["Subtypes", of(json.subtypes || [])], ["Supertypes", of(json.supertypes || [])]],
                  realization: [["Realized by", of(json.realizationClass)], ["Specification", of(json.specificationClass)]],
                  dependency: [["Client", of(json.client)], ["Supplier", of(json.supplier)]]}[element.kind];
    return ends.map(([title, list]) => section(title, list, rows(list, (one) => this.elementRow(one))));
  }

  otherParts(element) {
    return [element.entry.reason ? h("p", {class: "note"}, `Not imported: ${element.entry.reason}.`) : null, this.picture(element),
            this.onDiagrams(this.model.diagramsOf(element))];
  }

  onDiagrams(diagrams) {
    return section("On diagrams", diagrams, rows(diagrams, (one) => this.elementRow(one)));
  }

  picture(element) {
    const picture = this.model.pictureOf(element);
    return picture ? picture.element : null;
  }
}

function decoded(text) {
  try {
    return decodeURIComponent(text);
  } catch {
    return text;
  }
}
const capital = (text) => text.charAt(0).toUpperCase() + text.slice(1);
