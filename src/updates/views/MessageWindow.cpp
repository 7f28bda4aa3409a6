#include "updates/views/MessageWindow.h"

namespace zolt {

MessageWindow::MessageWindow(const QString& title, const QString& sentence, QWidget* parent)
    : UpdateWindow(title, sentence, parent) {
  connect(addDefaultButton(tr("OK"), QStringLiteral("ok")), &QPushButton::clicked, this, &QDialog::accept);
  finish();
}

ConsentWindow::ConsentWindow(QWidget* parent)
    : UpdateWindow(
          tr("Check for updates automatically?"),
          tr("Zolt can check for new versions from time to time and tell you when there is one. You can always "
             "check for updates yourself with \"Check for Updates...\"."),
          parent) {
  const auto answersBy = [this](QPushButton* button, bool answer) {
    connect(button, &QPushButton::clicked, this, [this, answer] {
      Q_EMIT answered(answer);
      accept();
    });
  };
  answersBy(addButton(tr("Don't Check"), QStringLiteral("dontCheck")), false);
  answersBy(addDefaultButton(tr("Check Automatically"), QStringLiteral("checkAutomatically")), true);
  finish();
}

}  // namespace zolt
