#pragma once

#include "host/text/KelString.h"
#include "ledger/propertyTable.h"

namespace ledger {

/// Holds a text against the one that the model has in its place.
[[nodiscard]] Verdict compareText(const Checked& checked, const KelString& inModel);
/// Holds a flag against the model's.
[[nodiscard]] Verdict compareFlag(const Checked& checked, bool inModel);

/// What the import takes of a property's text, in UTF-8.
[[nodiscard]] std::string takenText(const Checked& checked);

/// The checks of the properties, by what they are about.
namespace checks {

Verdict description(const Checked& checked);
Verdict noteText(const Checked& checked);
Verdict stereotype(const Checked& checked);
Verdict initialValue(const Checked& checked);
Verdict type(const Checked& checked);
Verdict visibility(const Checked& checked);
Verdict containment(const Checked& checked);
Verdict concurrency(const Checked& checked);
Verdict multiplicity(const Checked& checked);
Verdict label(const Checked& checked);
Verdict isAbstract(const Checked& checked);
Verdict isPersistent(const Checked& checked);
Verdict space(const Checked& checked);
Verdict isStatic(const Checked& checked);
Verdict isDerived(const Checked& checked);
Verdict isVirtual(const Checked& checked);
Verdict isFriend(const Checked& checked);
Verdict isNavigable(const Checked& checked);
Verdict isAggregate(const Checked& checked);
Verdict supplier(const Checked& checked);
Verdict associationClass(const Checked& checked);
Verdict roleLabel(const Checked& checked);
Verdict operationText(const Checked& checked);

} // namespace checks

} // namespace ledger
