#include "bridge/KelIbmRationalRose40ImportDllInterface.h"

KelModelBridgeDllInterface* getKelIbmRationalRose40ImportInterface() {
    static KelIbmRationalRose40ImportDllInterface bridge;
    return &bridge;
}
