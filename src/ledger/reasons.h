#pragma once

#include "ledger/Reason.h"

/// The reasons that several kinds of objects and properties share. A reason of one kind or property alone is in its row
/// (kindTable.cpp, propertyTable.cpp).
namespace ledger::reasons {

using enum Outcome;
using enum Weight;

inline constexpr Reason kept{imported, bulk, ""};
inline constexpr Reason noteText{imported, bulk, "as the text of a note"};
inline constexpr Reason readFromUnit{imported, bulk, "its content was read from the unit"};

// Outside of the purpose of the import.
inline constexpr Reason withObject{dropped, bulk, "its object is not imported"};
inline constexpr Reason within{dropped, listed, "its container is not imported"};
inline constexpr Reason layout{dropped, bulk, "layout is not imported"};
inline constexpr Reason layoutOfNote{dropped, listed, "layout is not imported"};
inline constexpr Reason identifier{dropped, bulk, "identifiers are not kept"};
inline constexpr Reason storage{dropped, bulk, "the distribution over files is not part of the model"};
inline constexpr Reason toolSettings{dropped, bulk, "settings of the tool are not part of the model"};
inline constexpr Reason toolProperties{dropped, bulk, "properties of tools are not imported"};
inline constexpr Reason noPlace{dropped, listed, "the model has no place for it"};
inline constexpr Reason unknownKind{dropped, listed, "the import does not know objects of this kind"};
inline constexpr Reason outsideLogicalView{dropped, listed, "only the logical view is imported"};

// Of a type that the import supports, but dropped here.
inline constexpr Reason notRecognised{dropped, loss, "the import does not recognize it in this form"};
inline constexpr Reason nothingActive{dropped, loss,
                                      "read as a property of the preceding element, which does not have it:"};
inline constexpr Reason refusedByOwner{dropped, loss, "its package refused it"};
inline constexpr Reason takesNoArguments{dropped, loss, "only template classes have arguments"};
inline constexpr Reason inNoAssociation{dropped, loss, "it is not within an association"};
inline constexpr Reason withAssociation{dropped, loss, "it belongs to an association that is not imported"};
inline constexpr Reason valueUnknown{dropped, loss, "the import does not know its value"};
inline constexpr Reason packageClosed{dropped, loss, "the import closed its package before it"};
inline constexpr Reason rootRenamed{dropped, loss,
                                    "the import takes only a root category that is named \"Logical View\""};
inline constexpr Reason muted{dropped, loss,
                              "the import skips everything after this kind of object until the next class, "
                              "association, class diagram or package:"};
inline constexpr Reason duplicate{dropped, loss, "its class already has an attribute of that name, from line"};
inline constexpr Reason inEnumeration{dropped, loss, "its class became an enumerated type"};
inline constexpr Reason inNoClass{dropped, loss, "it is not within a class"};
inline constexpr Reason tooFewEnds{dropped, loss, "an association needs two ends"};
inline constexpr Reason endWithoutClass{dropped, loss, "an end does not name a class"};
inline constexpr Reason withoutSupplier{dropped, loss, "it does not name a class"};
inline constexpr Reason supplierUnknown{dropped, loss, "its class is not defined anywhere:"};
inline constexpr Reason endNotDrawn{dropped, loss, "one of its ends is not a class on the diagram"};
inline constexpr Reason nothingToShow{dropped, loss, "the element it shows is not on the model's diagram"};
inline constexpr Reason attachedToNothing{dropped, loss, "only attached notes are imported"};

// Imported, but not as the file has it.
inline constexpr Reason unitNotRead{changed, loss, "its content is in a file that was not read:"};
inline constexpr Reason unitRepeated{changed, listed, "its content is in the model where its file is named first:"};
inline constexpr Reason nameCut{changed, loss, "the name is cut at its first inner quote, and backslashes are kept:"};
inline constexpr Reason nameCleared{changed, listed, "the generated name was removed"};
inline constexpr Reason nameOnly{changed, listed,
                                 "only its name is kept, among the \"Use Case Classes in Class Diagrams\""};
inline constexpr Reason becameType{changed, listed, "it became an enumerated type"};
inline constexpr Reason merged{changed, listed, "it was merged into the class of the same name from line"};
inline constexpr Reason misplaced{changed, listed, "in the model it is in"};
inline constexpr Reason given{changed, loss, "read as part of the preceding element; in the model it belongs to"};
inline constexpr Reason amongNamed{changed, listed,
                                   "its class is not defined in the logical view; the model has it in the package "
                                   "\"Use Case Classes in Class Diagrams\""};
inline constexpr Reason noteOnDiagram{changed, loss,
                                      "the note is on the diagram, but the element it is attached to is not"};
inline constexpr Reason typeDefaulted{changed, listed, "no type is given; the model has"};
inline constexpr Reason typeDiffers{changed, listed, "the model's type is"};
inline constexpr Reason attributeSplit{changed, listed, "split into one copy per key; the first copy is"};
inline constexpr Reason associationClass{changed, listed, "replaced by two associations with the class"};
inline constexpr Reason drawnTwice{changed, listed, "the diagram in the model shows it once"};
inline constexpr Reason onAssociationOnly{changed, listed, "only the association is marked as an aggregation"};
inline constexpr Reason textCut{changed, loss, "the text was cut after"};
inline constexpr Reason overwritten{changed, loss, "overwritten by a later line"};
inline constexpr Reason keywordInText{changed, loss, "words in the text are read as a keyword, which changes"};
inline constexpr Reason literals{changed, listed, "imported as the values of the type"};
inline constexpr Reason drawnFor{changed, listed, "read as a view of a relationship, which is added to"};
inline constexpr Reason rootPresented{
    changed, listed,
    "the import takes only a root named \"Logical View\" and got it under that name; the "
    "model has its own"};
inline constexpr Reason classAdded{changed, listed, "read as the name of a class, which is added to the model:"};
inline constexpr Reason noteFor{changed, listed, "read as the attachment of a note, which is added to"};
inline constexpr Reason noteOfOther{changed, loss, "the note has the text of another note, from line"};
inline constexpr Reason textAtQuote{changed, loss,
                                    "the text is cut at its first inner quote, and backslashes are kept"};
inline constexpr Reason textAdded{changed, listed, "combined with other texts:"};
inline constexpr Reason replaced{changed, loss, "bytes invalid in the file's encoding were replaced by U+FFFD"};
inline constexpr Reason differs{changed, loss, "the model has"};
inline constexpr Reason takenAsTrue{changed, listed, "any value counts as TRUE"};

} // namespace ledger::reasons
