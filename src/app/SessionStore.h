#pragma once

#include <QObject>
#include <QRect>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "app/PaneMaker.h"
#include "app/TerminalWindow.h"
#include "saved/SessionFolder.h"
#include "settings/EmulationSettingsStore.h"
#include "view/TerminalTabs.h"

namespace zolt {

/// A window of an earlier session, with new shells in its terminals.
struct RestoredWindow {
  std::vector<DetachedTab> tabs;  ///< never empty
  int current = 0;                ///< tab
  std::optional<QRect> place;     ///< on a screen that is there, without the frame
  Qt::WindowStates state;
};

/// Keeps the windows of the full emulation from one run to the next, while the setting says so; where it does not, what
/// was kept is removed. What fails is said on standard error, and costs nothing but what it was about. Main thread.
class SessionStore : public QObject {
  Q_OBJECT

 public:
  /// `settings` must outlive the store.
  SessionStore(const std::string& folder, const EmulationSettingsStore& settings);

  /// Remembers what `windows` show now, for `write`. Waits for the emulation threads, but no longer than two seconds:
  /// then the text of those that are busy is left out.
  void capture(const std::vector<TerminalWindow*>& windows);
  /// Writes what was captured last, if anything was.
  void write();

  /// The windows of the last run, their panes made by `panes`.
  std::vector<RestoredWindow> restore(PaneMaker& panes) const;

 private:
  struct Captured {
    SavedSession session{};
    std::map<std::string, vt::TerminalRecord> terminals{};
  };

  bool isWanted() const { return m_settings.isOn() && m_settings.current().restorePreviousSession; }
  void forgetUnlessWanted() const;
  Result<BlockCipher::Key> key() const;
  DetachedTab restoredTab(const SavedTab& tab, PaneMaker& panes, const QString& notice,
                          const BlockCipher::Key& key) const;

  SessionFolder m_folder;
  const EmulationSettingsStore& m_settings;
  std::optional<Captured> m_captured;
};

}  // namespace zolt
