#pragma once

namespace kelvane {

// From now on forms and controls answer screen readers, and other programs that read windows and
// press their buttons by way of Qt. Does nothing until one of them asks.
void ServeScreenReaders();

}  // namespace kelvane
