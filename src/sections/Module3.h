#pragma once

namespace kelvane {

class Form3;

// Draws the scales on the tracks of the options: a centre line, a tick every 200 twips and one
// twice as tall every 1000. The ticks have nothing to do with the options' values.
void DrawOptionScales(Form3& form);

}  // namespace kelvane
