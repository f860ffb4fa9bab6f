#pragma once

#include <QString>
#include <QStringList>

namespace kelvane {

// Qt's name filters for a filter text as the dialogs have it (see CommonDialog.h), in its
// order: a description and its pattern each, "MP4 Files (*.mp4) (*.mp4)". A description without a
// pattern is its own. None for an empty text.
QStringList NameFilters(const QString& filter);

}  // namespace kelvane
