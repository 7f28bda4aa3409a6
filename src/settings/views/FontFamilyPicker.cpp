#include "settings/views/FontFamilyPicker.h"

#include <QFontDatabase>
#include <QSignalBlocker>

namespace zolt {

namespace {

// Only those with letters: emoji and symbol fonts have a fixed pitch, too.
QStringList fixedPitchFamilies() {
  QStringList families = QFontDatabase::families(QFontDatabase::Latin);
  families.removeIf([](const QString& family) {
    return !QFontDatabase::isFixedPitch(family) || QFontDatabase::isPrivateFamily(family);
  });
  return families;
}

}  // namespace

FontFamilyPicker::FontFamilyPicker(QWidget* parent) : PopUpPicker(parent), m_installed(fixedPitchFamilies()) {
  setTone(Tone::Secondary);
  connect(this, &QComboBox::textActivated, this,
          [this](const QString& family) { Q_EMIT chosen(family.toStdString()); });
}

void FontFamilyPicker::setFamily(const std::string& family) {
  const QString name = QString::fromStdString(family);
  QStringList offered = m_installed;
  if (!name.isEmpty() && !offered.contains(name)) offered.prepend(name);
  const QSignalBlocker silent(this);
  if (offered != m_offered) {
    clear();
    addItems(offered);
    m_offered = offered;
  }
  setCurrentIndex(static_cast<int>(offered.indexOf(name)));
  update();
}

}  // namespace zolt
