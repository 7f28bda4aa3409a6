#include "app/OutputSaving.h"

#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <algorithm>
#include <array>

namespace zolt {

namespace {

struct Format {
  const char* filter;
  const char* suffix;
  OutputFormat format;
};

constexpr std::array kFormats{
    Format{QT_TRANSLATE_NOOP("zolt::OutputSaving", "Plain Text (*.txt)"), "txt", OutputFormat::PlainText},
    Format{QT_TRANSLATE_NOOP("zolt::OutputSaving", "Text with Colours (*.ansi)"), "ansi", OutputFormat::WithColours},
};

QString filterOf(const Format& format) {
  return OutputSaving::tr(format.filter);
}

const Format& formatOf(const QString& filter) {
  const auto* found = std::ranges::find_if(kFormats, [&](const Format& each) { return filterOf(each) == filter; });
  return found == kFormats.end() ? kFormats.front() : *found;
}

// Where the user saved last, in any window.
QString& lastFolder() {
  static QString folder;
  return folder;
}

}  // namespace

QString proposedOutputName(const QDateTime& time) {
  return OutputSaving::tr("Zolt Output %1").arg(time.toString(QStringLiteral("yyyy-MM-dd 'at' HH.mm"))) +
         QLatin1Char('.') + QLatin1String(kFormats.front().suffix);
}

OutputSaving::OutputSaving(ContentView& content, Clock& clock)
    : m_content(content), m_clock(clock), m_panelTimer(clock.makeTimer([this] { showPanel(); })) {}

OutputSaving::~OutputSaving() = default;

void OutputSaving::ask() {
  if (isSaving()) {
    showPanel();
    m_panel->setFocus(Qt::ShortcutFocusReason);
    return;
  }
  if (m_dialog) return;
  const bool known = !lastFolder().isEmpty() && QFileInfo(lastFolder()).isDir();
  m_dialog = new QFileDialog(m_content.window(), tr("Save Output As"), known ? lastFolder() : QDir::homePath());
  m_dialog->setAttribute(Qt::WA_DeleteOnClose);
  m_dialog->setAcceptMode(QFileDialog::AcceptSave);
  m_dialog->setFileMode(QFileDialog::AnyFile);
  QStringList filters;
  for (const Format& each : kFormats) {
    filters << filterOf(each);
  }
  m_dialog->setNameFilters(filters);
  m_dialog->setDefaultSuffix(QLatin1String(kFormats.front().suffix));
  m_dialog->selectFile(proposedOutputName(QDateTime::currentDateTime()));
  connect(m_dialog, &QFileDialog::filterSelected, m_dialog, [dialog = m_dialog](const QString& filter) {
    dialog->setDefaultSuffix(QLatin1String(formatOf(filter).suffix));
  });
  connect(m_dialog, &QDialog::accepted, this, [this, dialog = m_dialog] { take(*dialog); });
  connect(m_dialog, &QDialog::finished, this, [this] { m_dialog.clear(); });
  m_dialog->open();
}

void OutputSaving::take(const QFileDialog& dialog) {
  const QStringList files = dialog.selectedFiles();
  if (files.isEmpty()) return;
  lastFolder() = QFileInfo(files.front()).absolutePath();
  save(files.front(), formatOf(dialog.selectedNameFilter()).format);
}

void OutputSaving::save(const QString& file, OutputFormat format) {
  const TerminalSurface& surface = m_content.surface();
  auto styles = format == OutputFormat::WithColours ? surface.outputStyles() : nullptr;
  m_saver = new OutputSaver(surface.excerpt(), std::move(styles), file, this, WorkerQueue::utility(), m_clock);
  connect(m_saver, &OutputSaver::ended, m_saver, &QObject::deleteLater);
  connect(m_saver, &OutputSaver::finished, this, &OutputSaving::end);
  connect(m_saver, &OutputSaver::failed, this, [this](const QString& reason) {
    end();
    showError(reason);
  });
  m_panelTimer->start(panelDelay);
}

void OutputSaving::showPanel() {
  if (m_panel) return;
  m_panel = new SavePanel(m_content.surface().canvas().parentWidget());
  m_panel->setProgress(m_saver->progress());
  connect(m_saver, &OutputSaver::progressed, m_panel, &SavePanel::setProgress);
  connect(m_panel, &SavePanel::cancelled, this, &OutputSaving::cancel);
  m_panel->show();
}

void OutputSaving::cancel() {
  if (m_dialog) m_dialog->reject();
  if (!isSaving()) return;
  m_saver->cancel();
  end();
}

// The saver lives until it has ended: on a slow disk a cancelled one may take a while, and nothing waits for it.
void OutputSaving::end() {
  m_panelTimer->stop();
  m_saver->disconnect(this);
  m_saver.clear();
  if (!m_panel) return;
  if (m_panel->isAncestorOf(m_content.window()->focusWidget())) m_content.surface().canvas().setFocus();
  m_panel->hide();
  m_panel->deleteLater();
  m_panel.clear();
}

void OutputSaving::showError(const QString& reason) {
  auto* box = new QMessageBox(QMessageBox::Warning, tr("Save Output"), tr("The output was not saved."), QMessageBox::Ok,
                              m_content.window());
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setInformativeText(reason);
  box->open();
}

}  // namespace zolt
