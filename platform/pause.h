#pragma once

namespace quillon {

/// Waits until the wall clock, read in whole seconds, stands `seconds` later than now. No window events run
/// meanwhile. A clock that is set back does not prolong the wait.
void Pause(float seconds);

} // namespace quillon
