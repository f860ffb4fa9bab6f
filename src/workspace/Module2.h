#pragma once

namespace kelvane {

class Form1;

// Resets the main window: removes the path, the size, the region and the progress, stops the player
// and closes the job's window if that is shown. The canvas shrinks to nothing, and the bars and
// scroll ranges follow it. The pause state, the output path and the tools' text stay. If a path was
// shown, the duration probe runs on the empty path; after a cancelled load dialog, the size probe
// does as well. The window must be loaded. For the user-interface thread.
void ResetEverything(Form1& form);

}  // namespace kelvane
