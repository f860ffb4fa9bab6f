#pragma once

#include <QString>

// The texts of a join: the mark of a removed section, file names, and the lines of the lists.
namespace kelvane {

// Replaces the path of a removed section in the list.
constexpr QLatin1String kDeletedSection(" Deleted Section ");

// Returns the path up to its last separator, which is included; empty if there is none.
QString FolderOf(const QString& path);

// Returns "intermediate07.ts" for 7.
QString IntermediateName(int number);

// Returns the line of a section in the list file of a join, with its line break. Trims `item`. An
// apostrophe in it ends the quoted text early.
QString ListFileLine(const QString& item);

// Returns the line of a section in a saved list, with its line break. Doesn't trim `item`.
QString SavedListLine(const QString& item);

// Returns "concat:intermediate00.ts|intermediate01.ts" for two sections, "concat:" for none.
QString ConcatListText(int sections);

}  // namespace kelvane
