#pragma once

#include <QString>

namespace kelvane {

// Returns what a crop whose new file is chosen as `path` does with it, as sentences for the user;
// empty if it just makes that file. `path` is absolute.
QString CropRemark(const QString& path);

}  // namespace kelvane
