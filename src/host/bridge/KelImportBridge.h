#pragma once

#include "host/bridge/KelModelBridgeImportDllInterface.h"

/// The names that a host of the import bridge for Rose 4.0 models needs besides its interface: those of the library,
/// its factory, its options and its messages. The values never change.
namespace KelImportBridge {

/// The file name of the plug-in.
inline constexpr const char* libraryName = "libKelIbmRationalRose40Import.so";

/// The name, for `dlsym`, of the only function that the plug-in exports.
inline constexpr const char* factoryName = "getKelIbmRationalRose40ImportInterface";

extern "C" {
/// The type of that function. The first call makes the bridge's only interface object and may throw `std::bad_alloc`;
/// every later call returns the same object.
using Factory = KelModelBridgeDllInterface*();
}

/// The interface object, from the result of `dlsym`, which must not be null. The plug-in owns the object, which lives
/// until the plug-in is unloaded.
[[nodiscard]] inline KelModelBridgeImportDllInterface& interfaceOf(void* factory) {
    return static_cast<KelModelBridgeImportDllInterface&>(*reinterpret_cast<Factory*>(factory)());
}

/// The identifier of the bridge for `getBridgeSpecification`. A host may run the bridge under another one.
inline constexpr const char* bridgeId = "IbmRationalRose40Import";
/// The document identifier of the bridge's texts in the literal registry while the plug-in is loaded, and the name of
/// the bridge in the host's messages.
inline constexpr const char* documentId = "KelIbmRationalRose40Import";

/// The names of the options that `getOptionList` lists.
namespace option {
/// The path of the model file, in UTF-8.
inline constexpr const char* file = "File";
/// The target system to whose types the type texts are converted: a value of `target`.
inline constexpr const char* supportedTypes = "Supported types";
/// The encoding of the file: a value of `BLIB::BP_ENCODING_ENUM`, or any other name that ICU knows.
inline constexpr const char* encoding = "Encoding";
} // namespace option

/// The values of the option `supportedTypes`. The first is the default; any other text counts as the first.
namespace target {
inline constexpr const char* cPlusPlus = "C++";
inline constexpr const char* oracle = "Oracle 7.x & 8";
} // namespace target

/// The codes of the bridge's messages, as `KelLogEvent::getCode` returns them and as a `KelException`'s text begins
/// with them in "[]". Events and exceptions may also have the messages of `HOCM`.
namespace message {
// Thrown.
inline constexpr const char* unableToOpenInputFile = "QEV_RRSE_F0001";
inline constexpr const char* badInputFileFormat = "QEV_RRSE_F0002";
inline constexpr const char* diagramNotCreated = "QEV_RRSE_F0009";
// Logged.
inline constexpr const char* associationNotInPackage = "QEV_RRSE_E0011";
inline constexpr const char* duplicateAttribute = "QEV_RRSE_W0019";
inline constexpr const char* creatingPackage = "QEV_RRSE_S0013";
inline constexpr const char* creatingDiagram = "QEV_RRSE_S0014";
inline constexpr const char* classNameToBeFound = "QEV_RRSE_D0012";
inline constexpr const char* creatingAssociation = "QEV_RRSE_D0015";
inline constexpr const char* creatingClass = "QEV_RRSE_D0016";
inline constexpr const char* creatingAttribute = "QEV_RRSE_D0017";
inline constexpr const char* connectingType = "QEV_RRSE_D0018";
// Reserved: no import reports them.
inline constexpr const char* inputModelParameterIsNull = "QEV_RRSE_F0003";
inline constexpr const char* classNotInDiagram = "QEV_RRSE_F0005";
inline constexpr const char* noRelation = "QEV_RRSE_F0010";
} // namespace message

} // namespace KelImportBridge
