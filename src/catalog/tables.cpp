#include "catalog/tables.h"

#include <array>

namespace catalog {

namespace {

using enum ColumnKind;
using enum TableId;

constexpr std::string_view keyAbout = "The number of the row.";
constexpr Column own{"id", key, keyAbout};
constexpr Column part{"id", reference, "The number of the element, which all tables share.", element};
constexpr Column name{"name", text, "The name; empty if it has none."};
constexpr Column position{"position", integer, "The place within its owner's list, as the model numbers it."};
constexpr Column visibility{"visibility", text, "public, protected, private or implementation."};
constexpr Column containment{"containment", text, "byValue, byReference, or NULL: unspecified."};
constexpr Column isStatic{"is_static", flag, "1: of the class, not of its objects."};
constexpr Column isFriend{"is_friend", flag, "1: marked as a friend."};
constexpr Column isVirtual{"is_virtual", flag, "1: marked as virtual."};

constexpr std::array modelColumns{
    own,
    Column{"name", text, "The name of the model, which is that of its file without the ending."},
    Column{"path", text, "The file, relative to the folder that was named, with /; unlike that of any other model."},
    Column{"size", integer, "Bytes of the file."},
    Column{"modified", text, "When the file was last changed, in UTC."},
    Column{"hash", text, "XXH64 of the file's bytes, as `xxhsum -H1` prints it. Copies of a file have the same."},
    Column{"encoding", text, "The encoding of the file's texts, by the name that ICU gives it."},
    Column{"petal_version", text, "The version of petal that read the file."},
    Column{"reading", text, "The options of the reading. A model is read again when they change."},
    Column{"status", text, "imported or failed."},
    Column{"failure", text, "Why it failed; NULL if it did not."},
    Column{"losses", integer, "The number of its rows in loss; NULL if it failed."},
    Column{"damages", integer, "Errors in the notation of its files; NULL if it failed."},
    Column{"documentation", text, "The description of the model."},
};
constexpr std::array unitColumns{
    own,
    Column{"name", text, "The name of the object that is in the file, such as a package."},
    Column{"model", reference, "The model that the unit is a part of.", model},
    Column{"path", text,
           "The file, relative to the model's folder, with /; if it was not found, as the model names it."},
    Column{"kind", text, "The kind of the object in the notation, such as Class_Category."},
    Column{"found", flag, "1: its content is in the model."},
    Column{"remark", text, "How it was found where it was not named, or why it was not."},
    Column{"size", integer, "Bytes of the file."},
    Column{"modified", text, "When the file was last changed, in UTC."},
    Column{"hash", text, "As model.hash."},
};
constexpr std::array originColumns{
    own,
    Column{"name", text, "The name of the tool that the model was made with, as the import calls it."},
    Column{"model", reference, "The model.", model},
    Column{"source_encoding", text, "The encoding of the file."},
    Column{"source_format", text, "The format of the file."},
    Column{"source_path", text, "As model.path."},
    Column{"source_kind", text, "The kind of the source."},
    Column{"tool_vendor", text, "The maker of that tool."},
    Column{"tool_versions", text, "The versions of that tool that the import reads."},
    Column{"tool_web", text, "The page of that tool."},
    Column{"tool_methodology", text, "What models of that tool are for."},
    Column{"tool_bridge_id", text, "The bridge that read the file."},
};
constexpr std::array elementColumns{
    own,
    name,
    Column{"model", reference, "The model that the element is in.", model},
    Column{"element_id", text,
           "The id that all outputs of petal have for the element; the same from one import to the next."},
    Column{"kind", text,
           "package, class, attribute, operation, argument, key, association, role, generalization, realization, "
           "dependency, diagram or type. The table of that name has more of the element; packages have none."},
    Column{"qualified_name", text,
           "The names from the outermost package down, joined with ::. Over 4,000 bytes only the end, after an "
           "ellipsis."},
    Column{"owner", reference, "The element that it is a part of; NULL for outermost packages and for types.", element},
    Column{"stereotype", text, "The stereotype of a class or package."},
    Column{"documentation", text, "The description that its author gave it."},
    Column{"file", text, "The unit's file in which it stands, as unit.path; NULL for the model's own file."},
    Column{"line", integer, "The line of the object that it was made from, or that caused it."},
    Column{"quid", text, "The identifier of that object in the file; NULL if it has none of its own."},
    Column{"words", text,
           "What the search needs besides name and documentation: the words of joined names (CustomerOrderLine) and "
           "pieces of texts without blanks (Chinese)."},
};
constexpr std::array typeColumns{
    part,
    name,
    Column{"kind", text, "base, or derived: with length, scale or values."},
    Column{"data_type", text, "The data type of the target system; undefined if the import knows none."},
    Column{"length", integer, "The length; 0 if none is given."},
    Column{"scale", integer, "The digits after the point; 0 if none is given."},
    Column{"user_defined", flag, "1: the model's own, not one of the target system."},
    Column{"physical_name", text, "The name in the target system."},
    Column{"derived_from", reference, "The type that it is derived from.", type},
    Column{"meaning", text,
           "What the name means: known (a data type, or a name that most languages know), class, several classes, or "
           "unknown."},
    Column{"class", reference, "The class of the model that the name means.", classTable},
};
constexpr std::array typeValueColumns{
    own,
    Column{"name", text, "The name of the value."},
    Column{"type", reference, "The enumerated type.", type},
    Column{"value", text, "What the name stands for."},
    position,
};
constexpr std::array classColumns{
    part,
    name,
    Column{"kind", text,
           "What the stereotype says, else the category: class, interface, enumeration, datatype, primitive, actor, "
           "boundary, control or type."},
    Column{"category", text,
           "The construct of the notation: class, interface, metaclass, classUtility, parameterizedClass, "
           "instantiatedClass ..."},
    Column{"stereotype", text, "The stereotype as it stands."},
    Column{"is_abstract", flag, "1: has no objects but those of its subclasses."},
    Column{"is_persistent", flag, "1: its objects outlive the program."},
    Column{"space", integer, "The number that the file has for it."},
    Column{"multiplicity", text, "How many objects it may have."},
    Column{"concurrency", integer, "0: sequential or not said, 1: guarded, 3: any other."},
};
constexpr std::array attributeColumns{
    part,
    name,
    Column{"class", reference, "The class that has it.", classTable},
    Column{"type", reference, "Its declared type.", type},
    visibility,
    containment,
    isStatic,
    Column{"is_derived", flag, "1: computed from others."},
    position,
    Column{"initial_value", text, "The value that it begins with."},
};
constexpr std::array operationColumns{
    part,
    name,
    Column{"class", reference, "The class that has it.", classTable},
    Column{"return_type", reference, "The type that it returns.", type},
    visibility,
    Column{"concurrency", integer, "As class.concurrency."},
    isFriend,
    isStatic,
    isVirtual,
    Column{"semantics", text, "How it works, as its author wrote it."},
    Column{"precondition", text, "What must hold before it."},
    Column{"postcondition", text, "What holds after it."},
};
constexpr std::array argumentColumns{
    part,
    name,
    Column{"operation", reference, "The operation that takes it; NULL for an argument of a template.", operation},
    Column{"class", reference, "The template class that it belongs to; NULL for an argument of an operation.",
           classTable},
    Column{"type", reference, "Its declared type.", type},
    position,
    Column{"initial_value", text, "The value that it has by default."},
};
constexpr std::array associationColumns{
    part,
    name,
    Column{"is_aggregation", flag, "1: one of its ends is a whole, of which the other is a part."},
};
constexpr std::array roleColumns{
    part,
    name,
    Column{"association", reference, "The association of which it is an end.", association},
    Column{"class", reference, "The class at this end; NULL if the model does not have it.", classTable},
    Column{"multiplicity", text, "How many objects may be at this end, such as 0..n; NULL if it is not said."},
    Column{"is_aggregate", flag, "1: the class at this end is the whole."},
    Column{"is_navigable", flag, "1: can be reached from the other end."},
    isStatic,
    isFriend,
    Column{"is_source", flag, "1: the end at which the association begins."},
    containment,
    Column{"position", integer, "1 for the first role of the association, 2 for the second."},
};
constexpr std::array generalizationColumns{
    own,
    name,
    Column{"element", reference, "The generalization as an element. Several pairs may share one.", element},
    Column{"subtype", reference, "The class that inherits.", classTable},
    Column{"supertype", reference, "The class that it inherits from.", classTable},
    visibility,
    isVirtual,
    isFriend,
};
constexpr std::array realizationColumns{
    part,
    name,
    Column{"realization_class", reference, "The class that realizes.", classTable},
    Column{"specification_class", reference, "The interface that it realizes.", classTable},
};
constexpr std::array dependencyColumns{
    part,
    name,
    Column{"client", reference, "The class that depends.", classTable},
    Column{"supplier", reference, "The class that it depends on.", classTable},
};
constexpr std::array keyColumns{
    part,
    name,
    Column{"class", reference, "The class that has the key.", classTable},
    Column{"kind", text, "candidate or foreign."},
    Column{"is_primary", flag, "1: the candidate key that is the primary key of its class."},
    Column{"user_defined", flag, "1: made for a key that the model's author marked."},
    Column{"candidate_key", reference, "Of a foreign key: the key that it refers to.", keyTable},
};
constexpr std::array keyAttributeColumns{
    own,
    Column{"name", text, "The name of the attribute."},
    Column{"key", reference, "The key.", keyTable},
    Column{"attribute", reference, "An attribute of the key.", attribute},
    Column{"position", integer, "The place of the attribute in the key, from 1."},
};
constexpr std::array roleForeignKeyColumns{
    own,
    Column{"name", text, "The name of the foreign key."},
    Column{"role", reference, "The role.", role},
    Column{"foreign_key", reference, "A foreign key that the role stands on.", keyTable},
};
constexpr std::array roleNameMapColumns{
    own,
    name,
    Column{"foreign_key", reference, "The foreign key.", keyTable},
    Column{"source", reference, "The attribute of the candidate key.", attribute},
    Column{"destination", reference, "The attribute of the foreign key that stands for it.", attribute},
};
constexpr std::array diagramColumns{part, Column{"name", text, "The name of the class diagram."}};
constexpr std::array diagramElementColumns{
    own,
    Column{"name", text, "The name of the element."},
    Column{"diagram", reference, "The diagram.", diagram},
    Column{"element", reference, "An element that is drawn on it.", element},
    Column{"position", integer, "The place in the order of drawing, from 1."},
};
constexpr std::array noteColumns{
    own,
    Column{"name", text, "The first line of the note."},
    Column{"element", reference, "The element that the note is about.", element},
    Column{"text", text, "The note."},
    Column{"position", integer, "The place among the notes of the element, from 1."},
};
constexpr std::array lossColumns{
    own,
    Column{"name", text, "The name of the object in the file; empty if it has none."},
    Column{"model", reference, "The model.", model},
    Column{"kind", text, "The kind of the object in the notation, such as ClassAttribute."},
    Column{"property", text, "The property of the object that was lost; NULL: the object itself."},
    Column{"outcome", text, "changed, or dropped: not in the imported model at all."},
    Column{"reason", text, "Why; detail is its last word."},
    Column{"detail", text, "What the reason is about: a name, a file, a line ..."},
    Column{"file", text, "As element.file."},
    Column{"line", integer, "The line where it stands."},
    Column{"column", integer, "The byte of the line at which it begins, from 1."},
};
constexpr std::array damageColumns{
    own,
    Column{"name", text, "The word for the kind of error, such as unclosedText."},
    Column{"model", reference, "The model.", model},
    Column{"text", text, "The error in words."},
    Column{"file", text, "As element.file."},
    Column{"line", integer, "The line where it stands."},
    Column{"column", integer, "The byte of the line at which it stands, from 1."},
};
constexpr std::array sourceObjectColumns{
    own,
    Column{"name", text, "The name in the object's head; of a view, of what it shows."},
    Column{"model", reference, "The model.", model},
    Column{"parent", reference,
           "The object that it stands in; of the content of a unit, the object that names the unit.", sourceObject},
    Column{"kind", text, "The word after (object: Class, UseCase, State ..."},
    Column{"element", reference, "The element that was made from it, if it was.", element},
    Column{"outcome", text, "imported, changed or dropped: what the import made of it."},
    Column{"quid", text, "Its identifier."},
    Column{"file", text, "As element.file."},
    Column{"line", integer, "The line where it begins."},
};
constexpr std::array sourcePropertyColumns{
    own,
    Column{"name", text, "The name of the property."},
    Column{"object", reference, "The object that has it.", sourceObject},
    Column{"value", text, "Its value as a text; several are joined with blanks. NULL if it holds objects only."},
    Column{"outcome", text, "imported, changed or dropped: what the import made of it."},
    Column{"line", integer, "The line where it stands."},
};

constexpr std::array all{
    Table{model, "model", "A model file.", modelColumns, 0},
    Table{unit, "unit", "A further file that a part of a model is kept in, or should be.", unitColumns, 2},
    Table{origin, "origin", "What a model was imported from, as the import says it.", originColumns, 2},
    Table{element, "element",
          "Everything in a model that has a name and a place: the start for most questions. The tables named as "
          "element.kind have further columns and the same id.",
          elementColumns, 2},
    Table{type, "type", "A declared type, one for each name in a model.", typeColumns, 0},
    Table{typeValue, "type_value", "A value of an enumerated type.", typeValueColumns, 2},
    Table{classTable, "class", "A class.", classColumns, 0},
    Table{attribute, "attribute", "An attribute of a class.", attributeColumns, 0},
    Table{operation, "operation", "An operation of a class.", operationColumns, 0},
    Table{argument, "argument", "An argument of an operation or of a template class.", argumentColumns, 0},
    Table{association, "association", "An association; its ends are in role.", associationColumns, 0},
    Table{role, "role", "An end of an association.", roleColumns, 0},
    Table{generalization, "generalization", "A class that inherits from another one.", generalizationColumns, 2},
    Table{realization, "realization", "A class that realizes an interface.", realizationColumns, 0},
    Table{dependency, "dependency", "A class that depends on another one.", dependencyColumns, 0},
    Table{keyTable, "key", "A candidate or foreign key of a class.", keyColumns, 0},
    Table{keyAttribute, "key_attribute", "An attribute of a key.", keyAttributeColumns, 2},
    Table{roleForeignKey, "role_foreign_key", "A foreign key that a role stands on.", roleForeignKeyColumns, 2},
    Table{roleNameMap, "role_name_map", "A pair of attributes of a foreign key and its candidate key.",
          roleNameMapColumns, 2},
    Table{diagram, "diagram", "A class diagram.", diagramColumns, 0},
    Table{diagramElement, "diagram_element", "An element that is drawn on a class diagram.", diagramElementColumns, 2},
    Table{note, "note", "A remark on an element.", noteColumns, 2},
    Table{loss, "loss", "Something of a type that the import supports, which was changed or dropped nevertheless.",
          lossColumns, 2},
    Table{damage, "damage", "An error in the notation of a model's files; of each model the first 1,000.",
          damageColumns, 2},
    Table{sourceObject, "source_object",
          "An object of the files as it stands, imported or not: use cases, states and components, too.",
          sourceObjectColumns, 2},
    Table{
        sourceProperty, "source_property",
        "A property of such an object. By default those with a value that the imported model has no place for, without "
        "layout and without what is drawn.",
        sourcePropertyColumns, 2},
};

constexpr bool isInOrder() {
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (all[index].id != static_cast<TableId>(index)) {
            return false;
        }
    }
    return all.size() == tableCount;
}
static_assert(isInOrder());

constexpr std::array attributesColumns{
    Detail{"id", "The number of the attribute."},
    Detail{"name", "Its name."},
    Detail{"model", "model.path."},
    Detail{"package", "The qualified name of the package of its class."},
    Detail{"class", "The name of its class."},
    Detail{"type", "The name of its type."},
    Detail{"visibility", "attribute.visibility."},
    Detail{"initial_value", "attribute.initial_value."},
    Detail{"is_static", "attribute.is_static."},
    Detail{"is_derived", "attribute.is_derived."},
    Detail{"containment", "attribute.containment."},
    Detail{"documentation", "element.documentation."},
    Detail{"class_id", "The number of its class."},
    Detail{"type_id", "The number of its type."},
};
constexpr std::array associationsColumns{
    Detail{"id", "The number of the association."},
    Detail{"name", "Its name."},
    Detail{"model", "model.path."},
    Detail{"package", "The qualified name of its package."},
    Detail{"first_class", "The name of the class at its first end."},
    Detail{"first_role", "The name of that end."},
    Detail{"first_multiplicity", "How many objects may be there."},
    Detail{"second_class", "The name of the class at its second end."},
    Detail{"second_role", "The name of that end."},
    Detail{"second_multiplicity", "How many objects may be there."},
    Detail{"is_aggregation", "association.is_aggregation."},
    Detail{"first_is_navigable", "role.is_navigable of the first end."},
    Detail{"second_is_navigable", "role.is_navigable of the second end."},
    Detail{"documentation", "element.documentation."},
    Detail{"first_class_id", "The number of the class at the first end."},
    Detail{"second_class_id", "The number of the class at the second end."},
};
constexpr std::array referencesColumns{
    Detail{"class", "The number of the class that uses the other one."},
    Detail{"used", "The number of the class that is used."},
    Detail{"by", "The kind of element by which: attribute, operation, argument, association, generalization ..."},
    Detail{"class_name", "The name of the one."},
    Detail{"used_name", "The name of the other."},
};
constexpr std::array inheritanceColumns{
    Detail{"class", "The number of the class."},
    Detail{"ancestor", "The number of a class that it inherits from."},
    Detail{"distance", "The steps between them, by the shortest way."},
    Detail{"class_name", "The name of the one."},
    Detail{"ancestor_name", "The name of the other."},
};
constexpr std::array unresolvedColumns{
    Detail{"name", "The name of the types."},
    Detail{"users", "The number of attributes, operations and arguments that have them."},
    Detail{"models", "The number of models."},
};
constexpr std::array duplicateColumns{
    Detail{"name", "The name of the classes."},
    Detail{"models", "The number of models that have one."},
    Detail{"classes", "The number of classes."},
};
constexpr std::array searchColumns{
    Detail{"name", "element.name."},
    Detail{"documentation", "element.documentation."},
    Detail{"words", "element.words."},
};
constexpr std::array aboutColumns{
    Detail{"id", keyAbout},
    Detail{"name", "The table or view, or whose version it is."},
    Detail{"column", "The column that is explained; NULL: the whole."},
    Detail{"text", "The explanation."},
};
constexpr std::array guideColumns{
    Detail{"id", keyAbout},
    Detail{"name", "The name by which petal asks it."},
    Detail{"question", "The question."},
    Detail{"sql", "The statement that answers it."},
};

constexpr std::array others{
    Thing{"attributes", "Attributes with the names of model, package, class and type; a row for each attribute.",
          attributesColumns},
    Thing{"associations", "Associations with the classes, names and multiplicities of both ends; a row for each.",
          associationsColumns},
    Thing{"class_references", "Pairs of classes of which one uses the other.", referencesColumns},
    Thing{"inheritance", "Every class with all that it inherits from. Followed for 100 steps.", inheritanceColumns},
    Thing{"unresolved_types", "Names of declared types that mean nothing known and no class of their model.",
          unresolvedColumns},
    Thing{"duplicate_classes", "Names of classes that several models have.", duplicateColumns},
    Thing{"estate_totals", "One row: the number of rows of each table."},
    Thing{"search",
          "The full-text index over names and documentation. In SQLite, SELECT element.* FROM search JOIN element ON "
          "element.id = search.rowid WHERE search MATCH 'order' finds CustomerOrderLine, too; 'order*' finds whatever "
          "begins with it. In PostgreSQL, SELECT * FROM element WHERE search @@ to_tsquery('simple', 'order'), and "
          "'order:*'; of a documentation the first 100,000 characters.",
          searchColumns},
    Thing{"about", "The explanation of each table, view and column, and the versions.", aboutColumns},
    Thing{"guide", "Useful questions with their SQL; `petal catalog --ask NAME` runs one.", guideColumns},
};

} // namespace

std::span<const Table> tables() {
    return all;
}

const Table& tableOf(TableId id) {
    return all[static_cast<std::size_t>(id)];
}

TableId numberedBy(TableId id) {
    const Column& first = tableOf(id).columns.front();
    return first.kind == ColumnKind::reference ? first.target : id;
}

std::span<const Thing> otherThings() {
    return others;
}

} // namespace catalog
