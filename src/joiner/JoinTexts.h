#pragma once

#include <QString>

// The texts of a join: what marks a removed section, what is written for each, and what is named.
namespace kelvane {

// Stands in the list in the place of a removed section's path.
constexpr QLatin1String kDeletedSection(" Deleted Section ");

// Up to and with the last separator; empty where there is none.
QString FolderOf(const QString& path);

// "intermediate07.ts"
QString IntermediateName(int number);

// The line of a section in the list file of a join, line break and all. An apostrophe in the path
// ends the quoted text early.
QString ListFileLine(const QString& item);

// The line of a section in a saved list, line break and all.
QString SavedListLine(const QString& item);

// "concat:intermediate00.ts|intermediate01.ts" for two sections; "concat:" for none.
QString ConcatListText(int sections);

}  // namespace kelvane
