#pragma once

namespace kelvane {

// Installs the accessibility interfaces of forms and controls. An interface is made only when a
// screen reader or another assistive program asks for it. To be called once, at the start.
void ServeScreenReaders();

}  // namespace kelvane
