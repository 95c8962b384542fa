#pragma once

#include "builder/Associations.h"
#include "builder/Attributes.h"
#include "builder/Binding.h"
#include "builder/Classes.h"
#include "builder/Diagrams.h"
#include "builder/Operations.h"
#include "builder/Packages.h"
#include "builder/Quids.h"
#include "builder/Relationships.h"
#include "builder/Types.h"
#include "scanner/Actions.h"
#include "scanner/Rule.h"

#include <array>
#include <cstddef>
#include <utility>

namespace rose {

namespace table {

using enum Lead;
using enum Tail;
using enum PackageGuard;
using enum MechanismGuard;
using enum Reader;
using enum KelClassCategoryType;

// clang-format off
/// The keyword rules in the order of their numbers. Text that no rule matches is skipped.
inline constexpr std::array<Rule, 64> rules{{
    // No. Lead          Literal                                 Tail        Package       Mechanism  Value      Effect
    { 1, oneBlank,       "logical_presentations",                valueTail,  anyPackage,   always, noReader,  call<ClosePackage>},
    { 2, oneBlank,       "abstract",                             valueTail,  needsPackage, muted,  noReader,  setAbstract},
    { 3, noLead,         "(object AttachView",                   valueTail,  needsPackage, muted,  noReader,  raise<&BuilderState::attachNote>},
    { 4, noLead,         "(object Label",                        valueTail,  needsPackage, muted,  noReader,  raise<&BuilderState::diagramDescription>},
    { 5, blanks,         "space",                                valueTail,  needsPackage, muted,  getValue,  setSpace},
    { 6, noLead,         "(object SubSystem",                    valueTail,  anyPackage,   always, noReader,  raise<&BuilderState::objectMechanism>},
    { 7, noLead,         "(object Mechanism",                    valueTail,  anyPackage,   always, noReader,  raise<&BuilderState::objectMechanism>},
    { 8, noLead,         "(object State_Diagram",                valueTail,  anyPackage,   always, noReader,  raise<&BuilderState::objectMechanism>},
    { 9, noLead,         "(object State_Machine",                lineTail,   anyPackage,   always, noReader,  raise<&BuilderState::objectMechanism>},
    {10, noLead,         "(object InheritView",                  valueTail,  needsPackage, muted,  noReader,  raise<&BuilderState::InGeneralizationView>},
    {11, noLead,         "(object RealizeView",                  valueTail,  needsPackage, muted,  noReader,  enterView<&BuilderState::InRealizationView>},
    {12, noLead,         "(object UsesView",                     valueTail,  needsPackage, muted,  noReader,  enterView<&BuilderState::InUsesView>},
    {13, oneBlank,       "stereotype",                           valueTail,  anyPackage,   muted,  getValue,  take<AddStereotypeToClass>},
    {14, blanks,         "(value Text",                          valueTail,  needsPackage, muted,  getValue,  take<CreateEnumType>},
    {15, blanks,         "persistence",                          valueTail,  needsPackage, muted,  noReader,  setPersistent},
    {16, blanks,         "friend",                               flagTail,   needsPackage, always, noReader,  setFriend},
    {17, blanks,         "static",                               flagTail,   needsPackage, muted,  noReader,  setStatic},
    {18, blanks,         "derived",                              flagTail,   needsPackage, muted,  noReader,  setDerived},
    {19, blanks,         "virtual",                              flagTail,   needsPackage, muted,  noReader,  setVirtual},
    {20, noLead,         "(object Class_Category",               looseTail,  anyPackage,   always, getValue,  begin<CreatePackage>},
    {21, noLead,         "(object ClassDiagram",                 valueTail,  needsPackage, always, getValue,  begin<CreateClassDiagram>},
    {22, noLead,         "(object ClassView",                    viewTail,   needsPackage, muted,  getValue5, addClassView},
    {23, blanks,         "compartment",                          valueTail,  needsPackage, always, noReader,  raise<&BuilderState::InCompartment>},
    {24, blanks,         "is_aggregate",                         flagTail,   needsPackage, muted,  noReader,  markAggregation},
    {25, noLead,         "(object Parameterized_Class",          valueTail,  needsPackage, always, getValue,  createClass<parameterizedClass>},
    {26, noLead,         "(object Parameterized_Class_Utility",  valueTail,  needsPackage, always, getValue,  createClass<parameterizedClassUtility>},
    {27, noLead,         "(object Instantiated_Class_Utility",   valueTail,  needsPackage, always, getValue,  createClass<instantiatedClassUtility>},
    {28, noLead,         "(object Instantiated_Class",           valueTail,  needsPackage, always, getValue,  createClass<instantiatedClass>},
    {29, noLead,         "(object Class_Utility",                valueTail,  needsPackage, always, getValue,  createClass<classUtility>},
    {30, noLead,         "(object Class",                        valueTail,  needsPackage, always, getValue,  createClass<classObject>},
    {31, noLead,         "(object Metaclass",                    valueTail,  needsPackage, always, getValue,  createClass<metaclass>},
    {32, optionalBlanks, "(object Inheritance_Relationship",     noTail,     needsPackage, muted,  noReader,  call<CreateGeneralization>},
    {33, blanks,         "documentation",                        valueTail,  needsPackage, muted,  getValue4ElseMultiLine, placeText},
    {34, blanks,         "label",                                valueTail,  needsPackage, muted,  getValue4ElseMultiLine, placeText},
    {35, blanks,         "NoteView",                             valueTail,  needsPackage, muted,  noReader,  enterNoteView},
    {36, noLead,         "object ClassAttribute",                spaceTail,  needsPackage, muted,  getValue,  createAttribute},
    {37, noLead,         "type",                                 valueTail,  needsPackage, muted,  getValue,  take<ConnectType>},
    {38, noLead,         "initv",                                looseTail,  needsPackage, muted,  getValue,  take<SetInitialValue>},
    {39, optionalSpaces, "exportControl",                        looseTail,  needsPackage, muted,  getValue,  setVisibility},
    {40, optionalSpaces, "Containment",                          looseTail,  needsPackage, muted,  getValue,  setContainment},
    {41, noLead,         "(object Operation",                    looseTail,  needsPackage, muted,  getValue,  take<CreateOperation>},
    {42, noLead,         "concurrency",                          looseTail,  needsPackage, muted,  getValue,  setConcurrency},
    {43, noLead,         "post_condition",                       looseTail,  needsPackage, muted,  noReader,  raise<&BuilderState::post>},
    {44, noLead,         "pre_condition",                        looseTail,  needsPackage, muted,  noReader,  raise<&BuilderState::pre>},
    {45, noLead,         "semantics",                            looseTail,  needsPackage, muted,  noReader,  raise<&BuilderState::sem>},
    {46, noLead,         "PDL",                                  looseTail,  needsPackage, muted,  getValue,  setOperationText},
    {47, noLead,         "opExportControl",                      looseTail,  needsPackage, muted,  getValue,  setOperationVisibility},
    {48, noLead,         "result",                               looseTail,  needsPackage, muted,  getValue,  take<ConnectReturnType>},
    {49, blanks,         "(object Parameter",                    valueTail,  needsPackage, muted,  getValue,  take<CreateArgument>},
    {50, noLead,         "(object AssociationViewNew",           valueTail,  needsPackage, muted,  getValue,  take<CreateAssociationInView>},
    {51, blanks,         "(object Association",                  valueTail,  needsPackage, always, getValue,  begin<CreateAssociation>},
    {52, blanks,         "(object RoleView",                     valueTail,  needsPackage, muted,  noReader,  raise<&BuilderState::InAssociationRoleView>},
    {53, blanks,         "(object Role",                         valueTail,  needsPackage, muted,  getValue,  take<CreateAssociationRole>},
    {54, blanks,         "Parent_View",                          valueTail,  needsPackage, muted,  getValue3, take<CreateToolID>},
    {55, blanks,         "client",                               valueTail,  needsPackage, muted,  getValue3, setClient},
    {56, blanks,         "supplier",                             valueTail,  needsPackage, muted,  getValue3, bindSupplier},
    {57, blanks,         {"client_cardinality", "(value cardinality"}, spaceTail, needsPackage, muted, getValue, take<SetCardinality>},
    {58, blanks,         "is_navigable",                         flagTail,   needsPackage, muted,  noReader,  setNavigable},
    {59, blanks,         "AssociationClass",                     valueTail,  needsPackage, muted,  getValue,  take<CreateAssociationClass>},
    {60, oneBlank,       "quid",                                 valueTail,  needsPackage, muted,  getValue,  take<SetQuid>},
    {61, oneBlank,       "quidu",                                valueTail,  needsPackage, muted,  getValue,  take<ConnectAssociationToDiagram>},
    {62, blanks,         "keys",                                 noTail,     needsPackage, muted,  noReader,  raise<&BuilderState::InQualifier>},
    {63, optionalBlanks, "(object Realize_Relationship",         noTail,     needsPackage, muted,  noReader,  call<CreateRealization>},
    {64, optionalBlanks, "(object Uses_Relationship",            noTail,     needsPackage, muted,  noReader,  call<CreateDependency>},
}};
// clang-format on

} // namespace table

using table::rules;

inline constexpr std::size_t ruleCount = rules.size();

/// The patterns alone, for code that matches but does not act.
inline constexpr std::array<Pattern, ruleCount> patterns = []<std::size_t... Index>(std::index_sequence<Index...>) {
    return std::array<Pattern, ruleCount>{rules[Index].pattern...};
}
(std::make_index_sequence<ruleCount>{});

} // namespace rose
