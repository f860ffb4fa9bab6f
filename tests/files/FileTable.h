#pragma once

#include <QSize>
#include <array>

// One file of each kind, and what may be expected of it. docs/files.md has the same rows.
namespace kelvane::testing {

enum class Played { kAsItIsStored, kBlack };
enum class Joined { kBoth, kOne, kNothing };

struct KnownFile {
  const char* name;
  const char* kind;
  // Shell commands that make the file. kMakers defines the functions that they call.
  const char* recipe;
  // The width, the height and the duration that the main window shows.
  const char* shown;
  Played played;
  // The size of what a crop writes with the left bar at 16 pixels and the top one at 8; empty if no
  // video comes of it.
  QSize cropped;
  // Which of its sections a join of the file with itself writes, under the file's own extension.
  Joined joined;
  // If not 0, the file is "plain.mp4" with this display rotation, in degrees.
  int turned = 0;
};

// Shell functions for the recipes below. `picture` makes two seconds of a still picture; `video`,
// `h264` and `wide` add a tone. The colour of a pixel says where it lies. The picture has no edges,
// since not every encoding keeps them. `packets_of_192` fails unless each 192 bytes of the file are
// a header of four bytes and a packet, whose first byte is 0x47.
inline constexpr const char* kMakers = R"(
set -e
tool() { ffmpeg -nostdin -v error "$@"; }
picture() {
  tool -f lavfi -i "nullsrc=size=160x120:rate=25:duration=2,format=gbrp,geq=r=255*X/W:g=255*Y/H:b=128" "$@"
}
video() { picture -f lavfi -i sine=duration=2 -pix_fmt yuv420p "$@"; }
h264() { video -c:v libx264 -preset ultrafast "$@"; }
wide() { h264 -vf scale=1000:120,setsar=1 "$@"; }
with_cover() {
  tool -f lavfi -i color=red:size=100x100 -frames:v 1 cover.png
  tool -i "$1" -i cover.png -map 0 -map 1 -c copy -disposition:v:1 attached_pic "$2"
}
with_subtitles() {
  printf '1\n00:00:00,000 --> 00:00:01,000\nWords\n' > words.srt
  tool -i "$1" -i words.srt -map 0 -map 1 -c copy "$2"
}
packets_of_192() { ! od -An -v -tx1 -w192 -j4 "$1" | cut -c 1-3 | grep -qv 47; }
half() { head -c $(($(stat -c %s "$1") / 2)) "$1" > "$2"; }
)";

// clang-format off
inline const auto kFiles = std::to_array<KnownFile>({
    {"h264.mp4", "H.264 in MP4", "h264 h264.mp4",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"wide.mp4", "the same, 1000 pixels wide", "wide wide.mp4",
     "1,000 by 0,120, 00:00:02", Played::kAsItIsStored, {978, 106}, Joined::kBoth},
    {"hevc.mp4", "HEVC of 10 bits in MP4",
     "video -c:v libx265 -x265-params log-level=none -preset ultrafast -pix_fmt yuv420p10le hevc.mp4",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"av1.mp4", "AV1 in MP4", "video -c:v libsvtav1 -preset 10 av1.mp4",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"vp9.webm", "VP9 in WebM", "video -c:v libvpx-vp9 -deadline realtime -cpu-used 8 vp9.webm",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"interlaced.ts", "MPEG-2, interlaced, in a transport stream", "video -c:v mpeg2video -flags +ildct+ilme -c:a mp2 interlaced.ts",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"camera.mts", "H.264, interlaced, in a camera's `.mts`, with packets of 192 bytes",
     "h264 -flags +ildct+ilme -c:a ac3 -mpegts_m2ts_mode 1 camera.mts; packets_of_192 camera.mts",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"wide.ts", "H.264 in a transport stream, 1000 pixels wide", "wide wide.ts",
     "1,000 by 0,120, 00:00:02", Played::kAsItIsStored, {978, 106}, Joined::kBoth},
    {"mjpeg.avi", "MJPEG in AVI", "video -c:v mjpeg -pix_fmt yuvj420p mjpeg.avi",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"windows.wmv", "WMV", "video -c:v wmv2 -c:a wmav2 windows.wmv",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"flash.flv", "FLV", "video -c:v flv1 -ar 44100 flash.flv",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"animated.gif", "GIF", "picture -vf 'split[a][b];[a]palettegen[p];[b][p]paletteuse=dither=none' animated.gif",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {139, 107}, Joined::kBoth},
    {"theora.ogv", "Theora in Ogg", "video -c:v libtheora -c:a libvorbis theora.ogv",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"prores.mov", "ProRes in MOV", "video -c:v prores_ks -pix_fmt yuv422p10le prores.mov",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 107}, Joined::kBoth},
    {"full.mp4", "H.264 in 4:4:4", "h264 -pix_fmt yuv444p full.mp4",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {139, 107}, Joined::kBoth},
    {"odd.mp4", "the same of odd sizes", "h264 -vf crop=155:115:0:0:exact=1,format=yuv444p -pix_fmt yuv444p odd.mp4",
     "0,155 by 0,115, 00:00:02", Played::kAsItIsStored, {134, 102}, Joined::kBoth},
    {"portrait.mp4", "portrait, stored so", "h264 -vf transpose=1 portrait.mp4",
     "0,120 by 0,160, 00:00:02", Played::kAsItIsStored, {98, 146}, Joined::kBoth},
    {"anamorphic.mp4", "pixels that are no squares", "h264 -vf setsar=16/11 anamorphic.mp4",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"variable.mp4", "a variable frame rate", "h264 -vf 'select=lt(n\\,25)+not(mod(n\\,4))' -fps_mode vfr variable.mp4",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"quarter.mp4", "with a note to turn it by 90 degrees", "h264 plain.mp4",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {}, Joined::kBoth, 90},
    {"half.mp4", "with a note to turn it by 180 degrees", "h264 plain.mp4",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth, 180},
    {"cover.mp4", "with a cover picture", "h264 plain.mp4; with_cover plain.mp4 cover.mp4",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"widecover.mp4", "1000 pixels wide, with a cover picture of 100 by 100", "wide plain.mp4; with_cover plain.mp4 widecover.mp4",
     "0,100 by 0,100, 00:00:02", Played::kAsItIsStored, {78, 86}, Joined::kBoth},
    {"subtitles.mkv", "with subtitles in MKV", "h264 plain.mp4; with_subtitles plain.mp4 subtitles.mkv",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"widesubtitles.mkv", "1000 pixels wide, with subtitles in MKV", "wide plain.mp4; with_subtitles plain.mp4 widesubtitles.mkv",
     "N/A by N/A, 00:00:02", Played::kAsItIsStored, {978, 106}, Joined::kBoth},
    {"tracks.mp4", "with several audio tracks", "h264 plain.mp4; tool -i plain.mp4 -f lavfi -i sine=f=880:duration=2 -map 0 -map 1 -c:v copy tracks.mp4",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"jump.ts", "with time stamps that jump ahead by 100 seconds", "h264 a.ts; h264 -output_ts_offset 100 b.ts; cat a.ts b.ts > jump.ts",
     "0,160 by 0,120, 00:01:42", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
    {"sound.m4a", "sound alone", "tool -f lavfi -i sine=duration=2 sound.m4a",
     "0,000 by 0,000, 00:00:02", Played::kBlack, {}, Joined::kBoth},
    {"still.png", "a still picture", "picture -frames:v 1 still.png",
     "0,160 by 0,120, N/A, bit", Played::kAsItIsStored, {139, 107}, Joined::kOne},
    {"empty.mp4", "an empty file", ": > empty.mp4",
     "0,000 by 0,000, no time", Played::kBlack, {}, Joined::kNothing},
    {"cutoff.mp4", "MP4, cut off in its middle", "h264 plain.mp4; half plain.mp4 cutoff.mp4",
     "0,000 by 0,000, no time", Played::kBlack, {}, Joined::kNothing},
    {"cutoff.mkv", "MKV, cut off in its middle", "h264 -g 1 plain.mkv; half plain.mkv cutoff.mkv",
     "0,160 by 0,120, 00:00:02", Played::kAsItIsStored, {138, 106}, Joined::kBoth},
});
// clang-format on

}  // namespace kelvane::testing
