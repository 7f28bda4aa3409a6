#include "settings/views/ShellPicker.h"

#include <QSignalBlocker>

namespace zolt {

ShellPicker::ShellPicker(StoredString& choice, ShellManager& shells, QWidget* parent)
    : PopUpPicker(parent), m_choice(choice), m_shells(shells) {
  // Changes are announced before they take effect, so refresh later, once for several changes.
  m_refresh.setSingleShot(true);
  m_refresh.setInterval(0);
  connect(&m_refresh, &QTimer::timeout, this, &ShellPicker::refresh);
  connect(&m_shells, &ShellManager::objectWillChange, &m_refresh, qOverload<>(&QTimer::start));
  connect(&m_choice, &StoredString::changed, &m_refresh, qOverload<>(&QTimer::start));
  connect(this, &QComboBox::activated, this,
          [this](int index) { m_choice.setValue(itemData(index).toString().toStdString()); });
  refresh();
}

void ShellPicker::refresh() {
  const QSignalBlocker silent(this);
  clear();
  for (const Shell& shell : m_shells.availableShells()) {
    addItem(QString::fromStdString(shell.name), QString::fromStdString(shell.executable));
  }
  setCurrentIndex(findData(QString::fromStdString(m_choice.value())));
  update();
}

}  // namespace zolt
