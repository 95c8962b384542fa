#include "scanner/RoseLexImport.h"

#include "scanner/Dispatch.h"
#include "scanner/InputLayer.h"

namespace rose {

bool RoseLexImport(std::FILE* stream) {
    scannerInput.startOver();
    yyin = stream;
    yylex();
    return true;
}

} // namespace rose
