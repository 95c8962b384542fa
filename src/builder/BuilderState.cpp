#include "builder/BuilderState.h"

namespace rose {

BuilderState state;

void startBuilding(KelModel& model, KelLog& log, const KelOptionList* options) {
    state = BuilderState();
    state.aModel = &model;
    state.localLog = &log;
    state.theOptions = options;
}

} // namespace rose
