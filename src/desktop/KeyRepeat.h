#pragma once

namespace zolt {

/// Asks the X server not to make up a release and a press each time a held key repeats (XKB's detectable auto-repeat),
/// for all windows of this process: whether such a release is real can only be guessed. A key that is pressed while it
/// is held is then one that repeats. Does nothing elsewhere, where the platform says what repeats. Main thread.
void askForKeyRepeatsWithoutReleases();

}  // namespace zolt
