#pragma once

#include "Engines.h"

#define FLEX_MATCHED(rule) ++rose::bench::flexCounts[(rule)-1];
#define FLEX_SKIPPED ;
