#include "updates/views/ProgressWindow.h"

#include "updates/views/UpdateTexts.h"

namespace zolt {

namespace {

// The range of the bar, since byte counts do not fit an int.
constexpr int kSteps = 1000;

}  // namespace

ProgressWindow::ProgressWindow(const QString& title, QWidget* parent)
    : UpdateWindow(title, QString(), parent), m_bar(new QProgressBar(this)) {
  m_bar->setObjectName(QStringLiteral("progress"));
  m_bar->setAccessibleName(title);
  m_bar->setTextVisible(false);
  content().addWidget(m_bar);
  QPushButton* cancel = addButton(tr("Cancel"), QStringLiteral("cancel"));
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  showBusy(title);
  finish();
}

void ProgressWindow::showBusy(const QString& title) {
  setTitle(title);
  m_bar->setRange(0, 0);
}

void ProgressWindow::showBytes(std::int64_t receivedBytes, std::int64_t totalBytes) {
  setText(progressText(receivedBytes, totalBytes));
  if (totalBytes == 0) return;
  m_bar->setRange(0, kSteps);
  m_bar->setValue(static_cast<int>(receivedBytes * kSteps / totalBytes));
}

}  // namespace zolt
