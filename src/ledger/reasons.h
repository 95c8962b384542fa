#pragma once

#include "ledger/Reason.h"

/// The reasons that several kinds of objects and properties share. Those that belong to one kind or property stand in
/// its row (kindTable.cpp, propertyTable.cpp).
namespace ledger::reasons {

using enum Outcome;
using enum Weight;

inline constexpr Reason kept{imported, bulk, ""};
inline constexpr Reason noteText{imported, bulk, "as the text of a note"};
inline constexpr Reason readFromUnit{imported, bulk, "it stands for the content of a unit"};

// By what the import is made for.
inline constexpr Reason withObject{dropped, bulk, "what it belongs to is not imported"};
inline constexpr Reason within{dropped, listed, "what it stands in is not imported"};
inline constexpr Reason layout{dropped, bulk, "how something is drawn is not imported"};
inline constexpr Reason layoutOfNote{dropped, listed, "how something is drawn is not imported"};
inline constexpr Reason identifier{dropped, bulk, "identifiers tie a file together and are not kept"};
inline constexpr Reason storage{dropped, bulk, "how a model is kept in files is not part of the model"};
inline constexpr Reason toolSettings{dropped, bulk, "settings of the tool are not part of the model"};
inline constexpr Reason toolProperties{dropped, bulk, "properties of tools are not imported"};
inline constexpr Reason noPlace{dropped, listed, "the model has no place for it"};
inline constexpr Reason unknownKind{dropped, listed, "the import does not know objects of this kind"};
inline constexpr Reason outsideLogicalView{dropped, listed, "only the logical view is imported"};

// What the import takes, but not here.
inline constexpr Reason notRecognised{dropped, loss, "the import does not recognize it in this form"};
inline constexpr Reason nothingActive{
    dropped, loss, "the import reads it as a property of the preceding element, which has none such:"};
inline constexpr Reason refusedByOwner{dropped, loss, "its package has refused it"};
inline constexpr Reason takesNoArguments{dropped, loss, "only template classes have arguments of their own"};
inline constexpr Reason inNoAssociation{dropped, loss, "it stands in no association"};
inline constexpr Reason inNoOperation{dropped, loss, "it stands in no operation"};
inline constexpr Reason withAssociation{dropped, loss, "it belongs to an association that is not imported"};
inline constexpr Reason valueUnknown{dropped, loss, "its value is none of those that the import knows"};
inline constexpr Reason packageClosed{dropped, loss, "the import has closed its package before it"};
inline constexpr Reason rootRenamed{dropped, loss,
                                    "the import takes only a root category that is named \"Logical View\""};
inline constexpr Reason muted{dropped, loss,
                              "what follows such an object is skipped up to the next class, association, class diagram "
                              "or package:"};
inline constexpr Reason duplicate{dropped, loss, "its class has an attribute of that name already, from line"};
inline constexpr Reason inEnumeration{dropped, loss, "its class became an enumerated type"};
inline constexpr Reason inNoClass{dropped, loss, "it stands in no class"};
inline constexpr Reason tooFewEnds{dropped, loss, "an association needs two ends"};
inline constexpr Reason endWithoutClass{dropped, loss, "an end names no class"};
inline constexpr Reason withoutSupplier{dropped, loss, "it names no class"};
inline constexpr Reason supplierUnknown{dropped, loss, "the class that it names is defined nowhere:"};
inline constexpr Reason endNotDrawn{dropped, loss, "an end of it is no class on the diagram"};
inline constexpr Reason nothingToShow{dropped, loss, "what it shows is not on the model's diagram"};
inline constexpr Reason attachedToNothing{dropped, loss, "only notes that are attached to something are taken"};

// What the import takes and does not leave as it was.
inline constexpr Reason unitNotRead{changed, loss, "its content is in a file that was not read:"};
inline constexpr Reason unitRepeated{changed, listed, "its content is in the model where its file is named first:"};
inline constexpr Reason nameCut{changed, loss, "its name ends at the first quote within, and keeps backslashes:"};
inline constexpr Reason nameCleared{changed, listed, "the name that the tool made up was cleared"};
inline constexpr Reason nameOnly{changed, listed,
                                 "only its name is kept, among the \"Use Case Classes in Class Diagrams\""};
inline constexpr Reason becameType{changed, listed, "it became an enumerated type"};
inline constexpr Reason merged{changed, listed, "it was merged into the class of the same name from line"};
inline constexpr Reason misplaced{changed, listed, "the model has it elsewhere, in"};
inline constexpr Reason given{changed, loss,
                              "the import takes it for a part of what stands in front of it; the model has it in"};
inline constexpr Reason amongNamed{changed, listed,
                                   "its class is not defined in the logical view; the model has it in the package "
                                   "\"Use Case Classes in Class Diagrams\""};
inline constexpr Reason noteOnDiagram{changed, loss,
                                      "what it is attached to is not on the diagram, which has the note"};
inline constexpr Reason typeDefaulted{changed, listed, "no type is given; the model has"};
inline constexpr Reason typeDiffers{changed, listed, "the model's type is"};
inline constexpr Reason attributeSplit{changed, listed, "each key has a copy of the attribute, beginning with"};
inline constexpr Reason associationClass{changed, listed, "two associations with that class stand for it"};
inline constexpr Reason drawnTwice{changed, listed, "the model's diagram holds it once"};
inline constexpr Reason onAssociationOnly{changed, listed, "only the association as a whole says so"};
inline constexpr Reason textCut{changed, loss, "the text was cut after"};
inline constexpr Reason overwritten{changed, loss, "a later line has overwritten it"};
inline constexpr Reason keywordInText{changed, loss, "the import takes words in the text for a keyword and changes"};
inline constexpr Reason literals{changed, listed, "the import takes them for the values of the type"};
inline constexpr Reason drawnFor{changed, listed, "the import shows a relationship for it on"};
inline constexpr Reason rootPresented{
    changed, listed,
    "the import takes only a root named \"Logical View\" and got it under that name; the "
    "model has its own"};
inline constexpr Reason noteFor{changed, listed, "the import takes it for the attachment of a note and adds one to"};
inline constexpr Reason noteOfOther{changed, loss, "the note has the text of another one, from line"};
inline constexpr Reason textAtQuote{changed, loss, "the text ends at the first quote within, and keeps backslashes"};
inline constexpr Reason textAdded{changed, listed, "other texts stand with it"};
inline constexpr Reason replaced{changed, loss, "bytes that the encoding does not have became U+FFFD"};
inline constexpr Reason differs{changed, loss, "the model has"};
inline constexpr Reason takenAsTrue{changed, listed, "whatever its value, it counts as TRUE"};

} // namespace ledger::reasons
