#pragma once

#include <QString>
#include <QStringList>

// The texts of a join: the mark of a removed section, file names, the lines of the lists, and what
// the dialogs for new files say.
namespace kelvane {

// Replaces the path of a removed section in the list.
constexpr QLatin1String kDeletedSection(" Deleted Section ");

// Returns the path up to its last separator, which is included; empty if there is none.
QString FolderOf(const QString& path);

// Returns "intermediate07.ts" for 7.
QString IntermediateName(int number);

// Returns the line "file '...'" of a section in the list file of a join, with its line break. Trims
// `item`. An apostrophe in `item` ends the quotes early.
QString ListFileLine(const QString& item);

// Returns the line of a section in a saved list, with its line break. Doesn't trim `item`.
QString SavedListLine(const QString& item);

// Returns "concat:intermediate00.ts|intermediate01.ts" for two sections, "concat:" for none.
QString ConcatListText(int sections);

// Returns sentences for the user on what a join of `sections` does with the new file `path`; empty
// if the join just makes that file. `path` is absolute.
QString JoinRemark(const QString& path, const QStringList& sections);

// The same for the file of a saved list. Its path may have blanks and quotes, since it isn't used
// in a command line.
QString SavedListRemark(const QString& path);

}  // namespace kelvane
