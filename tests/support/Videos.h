#pragma once

#include <QColor>
#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>

// Videos made and examined with the real tools. The functions that make a file return whether they
// could make it.
namespace kelvane {

// Runs the tool to its end without any input; `printed` takes what the tool prints. Returns false
// if the tool fails or takes more than five minutes.
bool RunTool(const QString& tool, const QStringList& arguments, QString* printed = nullptr);

// A moving test pattern with a tone, 25 pictures a second.
bool MakeVideo(const QString& path, QSize size, int seconds);
// One colour, by its name, 320 by 180 pixels, with a tone, 25 pictures a second.
bool MakePlainVideo(const QString& path, const QString& colour, double seconds);
// A chequerboard whose squares are single pixels, black in the corner, with a tone. The encoding
// keeps every pixel as it is.
bool MakeChequers(const QString& path, QSize size, int seconds);
// A second of each colour in turn, with a tone, 25 pictures a second.
bool MakeColours(const QString& path, QSize size, const QList<QRgb>& colours);
// A copy of the video at `path` with a note for players to turn it, as telephones write.
bool MakeTurned(const QString& path, const QString& turned, int degrees);

// The size of the file's first video stream; empty if it has none.
QSize VideoSize(const QString& path);
// The duration that the file states; 0 if it states none.
double VideoSeconds(const QString& path);
// The number of pictures that can be decoded.
int DecodedPictures(const QString& path);
// The same; -1 if ffmpeg complains while it decodes the file.
int PicturesWithoutComplaint(const QString& path);
// A checksum of all pictures, decoded without turning them; empty if they can't be decoded.
QString PicturesSum(const QString& path);

}  // namespace kelvane
