#include "bridge/KelIbmRationalRose40ImportDllInterface.h"

#include "bridge/failures.h"

KelModelBridgeDllInterface* getKelIbmRationalRose40ImportInterface() {
    static KelIbmRationalRose40ImportDllInterface bridge;
    rose::failures(); // now: when one is needed there may be no memory left
    return &bridge;
}
