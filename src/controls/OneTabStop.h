#pragma once

class QButtonGroup;

namespace zolt {

/// Makes the checked button of an exclusive group the only one of it at which the Tab key stops, from now on; the arrow
/// keys go from there to the others.
void keepOneTabStop(QButtonGroup& group);

}  // namespace zolt
