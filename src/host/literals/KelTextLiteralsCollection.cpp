#include "host/literals/KelTextLiteralsCollection.h"

#include "host/literals/KelLiteralRegistry.h"

// Reaching for the registry makes sure that it is there before any collection, and so outlives them all.
KelTextLiteralsCollection::KelTextLiteralsCollection() {
    KelLiteralRegistry::instance();
}

KelTextLiteralsCollection::~KelTextLiteralsCollection() {
    KelLiteralRegistry::instance().unregisterCollection(*this);
}

bool KelTextLiteralsCollection::init() {
    return KelLiteralRegistry::instance().registerCollection(*this);
}
