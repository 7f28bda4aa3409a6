#include "settings/views/PreferencesView.h"

#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "settings/views/AdvancedSettings.h"
#include "settings/views/AppearanceSettings.h"
#include "settings/views/GeneralSettings.h"
#include "settings/views/KeybindingsSettings.h"
#include "settings/views/PreferencesTabBar.h"

namespace zolt {

namespace {

constexpr QSize kSmallest{500, 350};

struct Tab {
  const char* label;
  const char* symbol;
  int key;  // with Alt
};
constexpr std::array<Tab, 4> kTabs{{{"General", "gear", Qt::Key_G},
                                    {"Appearance", "paintbrush", Qt::Key_A},
                                    {"Keys", "keyboard", Qt::Key_K},
                                    {"Advanced", "wrench.and.screwdriver", Qt::Key_D}}};

}  // namespace

PreferencesView::PreferencesView(QStringList tabs, Config& config, UserDefaults& defaults, ShellManager& shells,
                                 QWidget* parent)
    : QWidget(parent),
      m_tabs(std::move(tabs)),
      m_emulation(config, defaults),
      m_bar(new PreferencesTabBar(this)),
      m_pages(new QStackedWidget(this)) {
  setMinimumSize(kSmallest);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(m_bar);
  column->addWidget(m_pages, 1);

  for (const Tab& tab : kTabs) {
    m_bar->addTab(QLatin1String(tab.label), QLatin1String(tab.symbol), QKeySequence(Qt::ALT | Qt::Key(tab.key)));
    const int index = m_bar->count() - 1;
    const QKeySequence number(Qt::CTRL | Qt::Key(Qt::Key_1 + index));
    connect(new QShortcut(number, this), &QShortcut::activated, this, [this, index] { setSelectedTab(index); });
  }
  m_pages->addWidget(new GeneralSettings(defaults, shells, m_emulation));
  m_pages->addWidget(new AppearanceSettings(config, m_emulation));
  m_pages->addWidget(new KeybindingsSettings(m_emulation));
  m_pages->addWidget(new AdvancedSettings(config, m_emulation));
  setSelectedTab(0);

  connect(m_bar, &PreferencesTabBar::selected, this, &PreferencesView::setSelectedTab);
  const auto steps = [this](QKeyCombination keys, int step) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, [this, step] { stepTab(step); });
  };
  steps(Qt::CTRL | Qt::Key_Tab, 1);
  steps(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, -1);
}

int PreferencesView::selectedTab() const {
  return m_pages->currentIndex();
}

void PreferencesView::setSelectedTab(int index) {
  m_bar->setCurrentIndex(index);
  m_pages->setCurrentIndex(index);
}

void PreferencesView::stepTab(int step) {
  setSelectedTab((selectedTab() + step + m_bar->count()) % m_bar->count());
}

}  // namespace zolt
