#include "bridge/KelIbmRationalRose40ImportDllInterface.h"

#include "bridge/unexpectedError.h"

KelModelBridgeDllInterface* getKelIbmRationalRose40ImportInterface() {
    static KelIbmRationalRose40ImportDllInterface bridge;
    rose::preparedUnexpectedError(); // now: when it is needed there may be no memory left
    return &bridge;
}
