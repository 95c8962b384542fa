#pragma once

class KelLog;
class KelMetadataOrigin;
class KelModel;
class KelString;

namespace rose {

/// Converts every text of the model from the encoding of that name to UTF-8 and notes the encoding on the origin.
/// "unknown" leaves all as it is; an encoding that the conversion service does not know, or that needs no
/// conversion, is logged and leaves the texts as they are; texts with invalid bytes are converted and counted in
/// the log.
void convertTexts(KelModel& model, KelMetadataOrigin& origin, const KelString& encodingName, KelLog& log);

} // namespace rose
