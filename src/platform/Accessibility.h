#pragma once

namespace kelvane {

// Installs the accessibility interfaces of forms and controls. One is made only when a screen
// reader, or another program that uses Qt's accessibility, asks for it.
void ServeScreenReaders();

}  // namespace kelvane
