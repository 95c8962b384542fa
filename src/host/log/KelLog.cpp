#include "host/log/KelLog.h"

KelLog::~KelLog() = default;
