#include "updates/views/MessageWindow.h"

namespace zolt {

MessageWindow::MessageWindow(const QString& title, const QString& sentence, QWidget* parent)
    : UpdateWindow(title, sentence, parent) {
  connect(addDefaultButton(tr("OK"), QStringLiteral("ok")), &QPushButton::clicked, this, &QDialog::accept);
  finish();
}

ConsentWindow::ConsentWindow(QWidget* parent)
    : UpdateWindow(tr("Check for updates automatically?"),
                   tr("Zolt can look for new versions from time to time and tell you when there is one. You can always "
                      "check by hand with \"Check for Updates...\"."),
                   parent) {
  connect(addButton(tr("Don't Check"), QStringLiteral("dontCheck")), &QPushButton::clicked, this, &QDialog::reject);
  connect(addDefaultButton(tr("Check Automatically"), QStringLiteral("checkAutomatically")), &QPushButton::clicked,
          this, &QDialog::accept);
  finish();
}

}  // namespace zolt
