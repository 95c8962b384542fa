#include "bridge/EncodingConversion.h"

#include "host/encoding/KelEncodingConverter.h"
#include "host/literals/HOCM.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelModel.h"

#include <string>

namespace rose {

void convertTexts(KelModel& model, KelMetadataOrigin& origin, const KelString& encodingName, KelLog& log) {
    if (encodingName == "unknown") {
        return;
    }
    KelEncodingConverter source(encodingName);
    KelEncodingConverter target("UTF-8");
    if (source.getHandle() == nullptr) {
        HOCM::ICU_CANNNOT_CREATE_CONVERTER.log(log, encodingName);
        return;
    }
    origin.sourceEncoding = source.getEncodingName();
    if (equivalentConverters(&source, &target)) {
        HOCM::ICU_EQUIVALENT_CONVERTERS.log(log);
        return;
    }
    int stringCount = 0;
    int errorCount = 0;
    model.transcode(&source, &target, stringCount, errorCount);
    if (errorCount > 0) {
        HOCM::ICU_CONVERSION_ERROR.log(log, std::to_string(errorCount).c_str(), std::to_string(stringCount).c_str());
    }
}

} // namespace rose
