#include "workspace/CropRemark.h"

#include <algorithm>
#include <vector>

#include "media/CommandLines.h"
#include "media/OutputRemark.h"
#include "shared/TextHelpers.h"

namespace kelvane {

// An existing file is kept, unless it is a playlist or a word of the path is "-y".
QString CropRemark(const QString& path) {
  const std::string narrow = ToNarrow(path);
  const std::vector<std::string> arguments = SplitCommandLine(narrow);
  const bool replaces = IsPlaylist(OutputFile(narrow)) ||
                        std::find(arguments.begin(), arguments.end(), "-y") != arguments.end();
  return FromNarrow(OutputRemark(narrow, replaces ? kFileIsReplaced : std::string()));
}

}  // namespace kelvane
