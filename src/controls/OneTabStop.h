#pragma once

class QButtonGroup;

namespace zolt {

/// Keeps the checked button of an exclusive group its only tab stop; the arrow keys reach the others.
void keepOneTabStop(QButtonGroup& group);

}  // namespace zolt
