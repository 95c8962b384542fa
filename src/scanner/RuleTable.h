#pragma once

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

// clang-format off
/// The keyword rules in the order of their numbers. What no rule takes is skipped byte by byte.
inline constexpr std::array<Rule, 64> rules{{
    // No. Lead          Literal                                 Tail        Package       Mechanism  Value      Effect
    { 1, oneBlank,       "logical_presentations",                valueTail,  anyPackage,   always, noReader,  closePackage},
    { 2, oneBlank,       "abstract",                             valueTail,  needsPackage, muted,  noReader,  setAbstract},
    { 3, noLead,         "(object AttachView",                   valueTail,  needsPackage, muted,  noReader,  expectNoteAttachment},
    { 4, noLead,         "(object Label",                        valueTail,  needsPackage, muted,  noReader,  expectDiagramText},
    { 5, blanks,         "space",                                valueTail,  needsPackage, muted,  getValue,  setSpace},
    { 6, noLead,         "(object SubSystem",                    valueTail,  anyPackage,   always, noReader,  enterMechanism},
    { 7, noLead,         "(object Mechanism",                    valueTail,  anyPackage,   always, noReader,  enterMechanism},
    { 8, noLead,         "(object State_Diagram",                valueTail,  anyPackage,   always, noReader,  enterMechanism},
    { 9, noLead,         "(object State_Machine",                lineTail,   anyPackage,   always, noReader,  enterMechanism},
    {10, noLead,         "(object InheritView",                  valueTail,  needsPackage, muted,  noReader,  enterGeneralizationView},
    {11, noLead,         "(object RealizeView",                  valueTail,  needsPackage, muted,  noReader,  enterRealizationView},
    {12, noLead,         "(object UsesView",                     valueTail,  needsPackage, muted,  noReader,  enterUsesView},
    {13, oneBlank,       "stereotype",                           valueTail,  anyPackage,   muted,  getValue,  addStereotype},
    {14, blanks,         "(value Text",                          valueTail,  needsPackage, muted,  getValue,  createEnumType},
    {15, blanks,         "persistence",                          valueTail,  needsPackage, muted,  noReader,  setPersistent},
    {16, blanks,         "friend",                               flagTail,   needsPackage, always, noReader,  setFriend},
    {17, blanks,         "static",                               flagTail,   needsPackage, muted,  noReader,  setStatic},
    {18, blanks,         "derived",                              flagTail,   needsPackage, muted,  noReader,  setDerived},
    {19, blanks,         "virtual",                              flagTail,   needsPackage, muted,  noReader,  setVirtual},
    {20, noLead,         "(object Class_Category",               looseTail,  anyPackage,   always, getValue,  createPackage},
    {21, noLead,         "(object ClassDiagram",                 valueTail,  needsPackage, always, getValue,  createClassDiagram},
    {22, noLead,         "(object ClassView",                    viewTail,   needsPackage, muted,  getValue5, addClassView},
    {23, blanks,         "compartment",                          valueTail,  needsPackage, always, noReader,  enterCompartment},
    {24, blanks,         "is_aggregate",                         flagTail,   needsPackage, muted,  noReader,  markAggregation},
    {25, noLead,         "(object Parameterized_Class",          valueTail,  needsPackage, always, getValue,  createParameterizedClass},
    {26, noLead,         "(object Parameterized_Class_Utility",  valueTail,  needsPackage, always, getValue,  createParameterizedClassUtility},
    {27, noLead,         "(object Instantiated_Class_Utility",   valueTail,  needsPackage, always, getValue,  createInstantiatedClassUtility},
    {28, noLead,         "(object Instantiated_Class",           valueTail,  needsPackage, always, getValue,  createInstantiatedClass},
    {29, noLead,         "(object Class_Utility",                valueTail,  needsPackage, always, getValue,  createClassUtility},
    {30, noLead,         "(object Class",                        valueTail,  needsPackage, always, getValue,  createClass},
    {31, noLead,         "(object Metaclass",                    valueTail,  needsPackage, always, getValue,  createMetaclass},
    {32, optionalBlanks, "(object Inheritance_Relationship",     noTail,     needsPackage, muted,  noReader,  createGeneralization},
    {33, blanks,         "documentation",                        valueTail,  needsPackage, muted,  getValue4ElseMultiLine, placeText},
    {34, blanks,         "label",                                valueTail,  needsPackage, muted,  getValue4ElseMultiLine, placeText},
    {35, blanks,         "NoteView",                             valueTail,  needsPackage, muted,  noReader,  enterNoteView},
    {36, noLead,         "object ClassAttribute",                spaceTail,  needsPackage, muted,  getValue,  createAttribute},
    {37, noLead,         "type",                                 valueTail,  needsPackage, muted,  getValue,  connectType},
    {38, noLead,         "initv",                                looseTail,  needsPackage, muted,  getValue,  setInitialValue},
    {39, optionalSpaces, "exportControl",                        looseTail,  needsPackage, muted,  getValue,  setVisibility},
    {40, optionalSpaces, "Containment",                          looseTail,  needsPackage, muted,  getValue,  setContainment},
    {41, noLead,         "(object Operation",                    looseTail,  needsPackage, muted,  getValue,  createOperation},
    {42, noLead,         "concurrency",                          looseTail,  needsPackage, muted,  getValue,  setConcurrency},
    {43, noLead,         "post_condition",                       looseTail,  needsPackage, muted,  noReader,  expectPostcondition},
    {44, noLead,         "pre_condition",                        looseTail,  needsPackage, muted,  noReader,  expectPrecondition},
    {45, noLead,         "semantics",                            looseTail,  needsPackage, muted,  noReader,  expectSemantics},
    {46, noLead,         "PDL",                                  looseTail,  needsPackage, muted,  getValue,  setOperationText},
    {47, noLead,         "opExportControl",                      looseTail,  needsPackage, muted,  getValue,  setOperationVisibility},
    {48, noLead,         "result",                               looseTail,  needsPackage, muted,  getValue,  setReturnType},
    {49, blanks,         "(object Parameter",                    valueTail,  needsPackage, muted,  getValue,  createArgument},
    {50, noLead,         "(object AssociationViewNew",           valueTail,  needsPackage, muted,  getValue,  createAssociationInView},
    {51, blanks,         "(object Association",                  valueTail,  needsPackage, always, getValue,  createAssociation},
    {52, blanks,         "(object RoleView",                     valueTail,  needsPackage, muted,  noReader,  enterRoleView},
    {53, blanks,         "(object Role",                         valueTail,  needsPackage, muted,  getValue,  createAssociationRole},
    {54, blanks,         "Parent_View",                          valueTail,  needsPackage, muted,  getValue3, createToolId},
    {55, blanks,         "client",                               valueTail,  needsPackage, muted,  getValue3, setClient},
    {56, blanks,         "supplier",                             valueTail,  needsPackage, muted,  getValue3, bindSupplier},
    {57, blanks,         {"client_cardinality", "(value cardinality"}, spaceTail, needsPackage, muted, getValue, setCardinality},
    {58, blanks,         "is_navigable",                         flagTail,   needsPackage, muted,  noReader,  setNavigable},
    {59, blanks,         "AssociationClass",                     valueTail,  needsPackage, muted,  getValue,  createAssociationClass},
    {60, oneBlank,       "quid",                                 valueTail,  needsPackage, muted,  getValue,  setQuid},
    {61, oneBlank,       "quidu",                                valueTail,  needsPackage, muted,  getValue,  connectAssociationToDiagram},
    {62, blanks,         "keys",                                 noTail,     needsPackage, muted,  noReader,  enterQualifier},
    {63, optionalBlanks, "(object Realize_Relationship",         noTail,     needsPackage, muted,  noReader,  createRealization},
    {64, optionalBlanks, "(object Uses_Relationship",            noTail,     needsPackage, muted,  noReader,  createDependency},
}};
// clang-format on

} // namespace table

using table::rules;

inline constexpr std::size_t ruleCount = rules.size();

/// The patterns alone, for those who match but do not act.
inline constexpr std::array<Pattern, ruleCount> patterns = []<std::size_t... Index>(std::index_sequence<Index...>) {
    return std::array<Pattern, ruleCount>{rules[Index].pattern...};
}
(std::make_index_sequence<ruleCount>{});

} // namespace rose
