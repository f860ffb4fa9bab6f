#pragma once

#include <QString>
#include <QStringList>

namespace kelvane {

// Returns Qt's name filters for CommonDialog::Filter, in the same order. Each is a description and
// its pattern in parentheses: "Videos|*.mp4" becomes "Videos (*.mp4)". A description without a
// pattern is its own pattern. The pattern "*.*" becomes "*". Returns an empty list for an empty
// filter.
QStringList NameFilters(const QString& filter);

}  // namespace kelvane
