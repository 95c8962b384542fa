#pragma once

class KelString;

namespace rose {

/// Opens the model file into `theFile` and reads its first 20 bytes, among which "(object Petal" must stand. The
/// scan goes on behind them. Throws `ROS_I_UNABLE_TO_OPEN_INPUT_FILE` or `ROS_I_BAD_INPUT_FILE_FORMAT`.
void openModelFile(const KelString& localPath);

} // namespace rose
