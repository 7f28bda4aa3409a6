#include "controls/OneTabStop.h"

#include <QAbstractButton>
#include <QButtonGroup>

namespace zolt {

void keepOneTabStop(QButtonGroup& group) {
  // Qt does the same, but only once one of the buttons has had the focus.
  QObject::connect(&group, &QButtonGroup::buttonToggled, &group, [](QAbstractButton* button, bool isChecked) {
    button->setFocusPolicy(isChecked ? Qt::StrongFocus : Qt::ClickFocus);
  });
}

}  // namespace zolt
