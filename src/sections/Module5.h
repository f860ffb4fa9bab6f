#pragma once

namespace kelvane {

class Form3;

// Puts the time line back to the top left corner of its frame.
void ResetTimeLinePosition(Form3& form);

// Paints the labels and ticks of the time line, once: what is painted stays. The text in Text4
// decides how far apart the ticks stand; their labels tell their place in pixels as seconds,
// whatever it is.
void DrawTimeLabels(Form3& form);

// The place of the extraction, which this window offers and doesn't do.
inline void ExtractShortie() {}

}  // namespace kelvane
