#include "diff/ModelReader.h"
#include "text/utf8.h"

// A third of a document is blanks, which SSE2 skips. Other files use the same templates without it, so these have a
// namespace of their own.
#ifdef __SSE2__
#define RAPIDJSON_SSE2
#define RAPIDJSON_NAMESPACE rapidjsonBySse2
#define RAPIDJSON_NAMESPACE_BEGIN namespace rapidjsonBySse2 {
#define RAPIDJSON_NAMESPACE_END }
#endif
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#ifdef __SSE2__
namespace rapidjson = rapidjsonBySse2;
#endif

namespace diff {

Model readModel(std::string document) {
    if (!text::isValidUtf8(document)) {
        throw BadDocument("it is not UTF-8");
    }
    constexpr std::size_t piece = 16; // of the text, which SSE2 reads at a time, also at its end
    document.reserve(document.size() + piece);
    const auto kept = std::make_shared<std::string>(std::move(document));
    ModelReader reader({kept, kept->data()}, kept->size(), false);
    rapidjson::Reader parser;
    rapidjson::InsituStringStream stream(kept->data());
    const rapidjson::ParseResult result =
        parser.Parse<rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag>(stream, reader);
    if (result.IsError()) {
        const std::string where = " (at byte " + std::to_string(result.Offset()) + ")";
        throw BadDocument((reader.getFault().empty()
                               ? "it is not JSON: " + std::string(rapidjson::GetParseError_En(result.Code()))
                               : reader.getFault()) +
                          where);
    }
    return reader.finish();
}

} // namespace diff
