#include "workspace/CropRemark.h"

#include "media/OutputRemark.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

// The tool isn't told to replace a file, but opens that of a list of pieces without a look at it.
QString CropRemark(const QString& path) {
  const std::string narrow = ToNarrow(path);
  const QString file = FromNarrow(OutputFile(narrow));
  const bool isList = file.endsWith(".m3u8"_L1, Qt::CaseInsensitive) ||
                      file.endsWith(".mpd"_L1, Qt::CaseInsensitive);
  return FromNarrow(OutputRemark(narrow, isList ? kFileIsReplaced : std::string()));
}

}  // namespace kelvane
