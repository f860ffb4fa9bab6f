#include "demo/DemoPart.h"
#include "support/Videos.h"

namespace kelvane::desktop {
namespace {

// Formulas of FFmpeg's geq filter: X and Y are a pixel's position, W and H the size of the picture.
// The filter is slow, so each part of the scene is painted once and then only moved.
struct Paint {
  QString red;
  QString green;
  QString blue;
  QString opacity = QStringLiteral("255");
};

QString Still(QSize size, const Paint& paint) {
  return QStringLiteral(
             "color=size=%1x%2:rate=25:duration=0.04,format=gbrap,"
             "geq=r='min(255,%3)':g='min(255,%4)':b='min(255,%5)':a='%6',"
             "format=yuva420p,loop=-1:1,setpts=N/25/TB")
      .arg(size.width())
      .arg(size.height())
      .arg(paint.red, paint.green, paint.blue, paint.opacity);
}

QString Sky(QSize size) {
  const auto colour = [](const char* dusk, int glow, int sun) {
    return QStringLiteral(
               "st(0,hypot(X-0.66*W,Y-0.5*H)/H);%1+%2*exp(-ld(0)/0.16)+%3*lt(ld(0),0.09)")
        .arg(QLatin1String(dusk))
        .arg(glow)
        .arg(sun);
  };
  return Still(size, {.red = colour("40+330*pow(Y/H,1.1)", 200, 400),
                      .green = colour("34+190*pow(Y/H,1.6)", 150, 300),
                      .blue = colour("100+60*sin(PI*Y/H)-40*Y/H", 40, 120)});
}

// Mountains that go by.
struct Range {
  double crest;       // in picture heights from the top
  double roughness;   // in picture heights
  const char* waves;  // periodic in the picture's width, so that there is no seam
  Paint paint;
  double speed;  // in picture widths per picture
};

QString Mountains(QSize size, const Range& range) {
  Paint paint = range.paint;
  paint.opacity = QStringLiteral("255*clip(Y-H*%1-H*%2*(%3)+0.5,0,1)")
                      .arg(range.crest)
                      .arg(range.roughness)
                      .arg(QLatin1String(range.waves));
  return Still(size, paint) + QStringLiteral(",scroll=horizontal=%1").arg(range.speed);
}

QString Balloon() {
  constexpr QSize kSize(110, 160);
  const auto colour = [](int dark, int light, int basket) {
    return QStringLiteral(
               "if(lt(Y,113),if(mod(floor((X-55)/(0.2+sqrt(max(0,1-pow((Y-55)/56,2))))/15+20.5),2),"
               "%1,%2)-0.7*max(0,X-55),%3)")
        .arg(dark)
        .arg(light)
        .arg(basket);
  };
  return Still(kSize,
               {.red = colour(235, 250, 70),
                .green = colour(50, 205, 40),
                .blue = colour(60, 90, 30),
                .opacity = QStringLiteral("255*max(max(clip(54-hypot(X-55,Y-55),0,1),"
                                          "clip(32-abs(X-55)-0.75*(Y-86),0,1)*between(Y,86,118)),"
                                          "max(lt(abs(abs(X-55)-9),1)*between(Y,112,138),"
                                          "lt(abs(X-55),11)*between(Y,136,153)))")});
}

}  // namespace

bool MakeDemoClip(const QString& path, QSize size, int seconds) {
  const QString far = Mountains(
      size, {.crest = 0.66,
             .roughness = 0.055,
             .waves = "sin(2*PI*X/W)+0.6*sin(6*PI*X/W+1)+0.3*sin(14*PI*X/W+2)+0.12*sin(34*PI*X/W)",
             .paint = {.red = "150-0.2*Y", .green = "75-0.1*Y", .blue = "130-0.1*Y"},
             .speed = 0.0004});
  const QString nearer = Mountains(
      size, {.crest = 0.78,
             .roughness = 0.05,
             .waves = "sin(4*PI*X/W+2)+0.5*sin(10*PI*X/W)+0.25*sin(22*PI*X/W+1)+0.1*sin(58*PI*X/W)",
             .paint = {.red = "95-0.1*Y", .green = "45-0.05*Y", .blue = "105-0.1*Y"},
             .speed = 0.0009});
  const QString near = Mountains(
      size,
      {.crest = 0.9,
       .roughness = 0.035,
       .waves = "sin(2*PI*X/W+4)+0.5*sin(8*PI*X/W+3)+0.12*sin(26*PI*X/W)+0.05*sin(122*PI*X/W)",
       .paint = {.red = "38", .green = "20", .blue = "52"},
       .speed = 0.002});
  const QString scene =
      QStringLiteral(
          "%1[sky];%2[far];%3[nearer];%4[near];%5[balloon];"
          "[sky][far]overlay[ridge];[ridge][nearer]overlay[valley];"
          "[valley][balloon]overlay=x='W*(0.18+0.05*sin(t/3))':y='H*(0.2+0.06*cos(t/2))'[flight];"
          "[flight][near]overlay,trim=duration=%6,format=yuv420p")
          .arg(Sky(size), far, nearer, near, Balloon())
          .arg(seconds);
  return RunTool(QStringLiteral("ffmpeg"),
                 {"-v", "error", "-filter_complex", scene, "-f", "lavfi", "-i",
                  QStringLiteral("sine=frequency=440:duration=%1").arg(seconds), "-preset",
                  "ultrafast", path});
}

}  // namespace kelvane::desktop
