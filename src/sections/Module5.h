#pragma once

namespace kelvane {

class Form3;
class PictureBox;

// Moves the time line to the top left corner of its frame.
void ResetTimeLinePosition(Form3& form);

// Clears the time line, draws its base line, and sets the font and the colour of its labels.
void ClearTimeLine(PictureBox& strip);

// Clears the time line and paints its labels and ticks. Can be repeated. The text in Text4 decides
// the distance of the ticks. A label shows the time at its position, a second to the pixel.
void DrawTimeLabels(Form3& form);

// Does nothing, and nothing calls it. Stabiliser::ExtractSection extracts the marked section.
inline void ExtractShortie() {}

}  // namespace kelvane
