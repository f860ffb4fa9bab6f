#pragma once

#include <QColor>
#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>

// Videos made and looked at with the real tools.
namespace kelvane {

// Runs the tool to its end with nothing to read. False if it fails or takes over a minute; what it
// printed goes to `printed`.
bool RunTool(const QString& tool, const QStringList& arguments, QString* printed = nullptr);

// A moving test picture with a tone, 25 pictures a second. False if it can't be made.
bool MakeVideo(const QString& path, QSize size, int seconds);
// One colour, by its name, without a change, 320 by 180 pixels, with a tone. False if it can't be
// made.
bool MakePlainVideo(const QString& path, const QString& colour, double seconds);

// Single pixels, black and white by turns both ways, black in the corner; still, and not rounded by
// any encoding; with a tone. False if it can't be made.
bool MakeChequers(const QString& path, QSize size, int seconds);

// A video with a tone whose pictures are of one colour each, a second of every colour in turn, 25
// pictures a second. False if it can't be made.
bool MakeColours(const QString& path, QSize size, const QList<QRgb>& colours);

// Makes a copy of a video with a note for players to turn it by 90 or 180 degrees, as telephones
// write. Returns whether it could be made.
bool MakeTurned(const QString& path, const QString& turned, int degrees);

// The size of the file's first picture stream; empty if it has none.
QSize VideoSize(const QString& path);
// How long the file says it lasts; 0 if it doesn't say.
double VideoSeconds(const QString& path);
// The number of pictures that decode.
int DecodedPictures(const QString& path);
// The same; -1 if the file doesn't decode without complaint.
int Pictures(const QString& path);

// A sum over every picture of the file as it decodes, without any turning; empty if it doesn't.
QString PicturesSum(const QString& path);

}  // namespace kelvane
