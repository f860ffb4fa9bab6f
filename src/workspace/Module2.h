#pragma once

namespace kelvane {

class Form1;

// Puts the main window back to where it was before its first video, and closes a job window on
// show. The text that the tools have printed so far is kept.
void ResetEverything(Form1& form);

}  // namespace kelvane
