#pragma once

#include <QString>

namespace kelvane {

// Returns what a crop does if `path` is chosen for its new file, as sentences for the user; empty
// if the crop just makes that file. `path` is absolute.
QString CropRemark(const QString& path);

}  // namespace kelvane
