#include "shared/SharedValues.h"

namespace kelvane {

QString VideoPath;
QString VideoDuration;
bool ProbeDimensionsDone = false;
std::int32_t CropWidth = 0;
std::int32_t CropHeight = 0;
std::int32_t CropLeft = 0;
std::int32_t CropTop = 0;
QString CropFilter;
QString OutputPath;
bool MainWindowMinimised = false;

}  // namespace kelvane
