// The layout of the forms: one grid, nothing clipped, everything reachable by keyboard, in any palette.
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <set>

#include "controls/ControlColors.h"
#include "controls/DestructiveButton.h"
#include "controls/SegmentedPicker.h"
#include "controls/SliderRow.h"
#include "controls/Switch.h"
#include "settings/views/PreferencesTabBar.h"
#include "settings_views/PreferencesFixture.h"
#include "support/Palettes.h"
#include "support/TextSize.h"

namespace zolt {
namespace {

class LayoutTest : public test::PreferencesTest {
 protected:
  void SetUp() override {
    PreferencesTest::SetUp();
    open(test::General);
  }
  void TearDown() override {
    QApplication::setPalette(m_palette);
    QApplication::setFont(m_font);
  }
  template <class Check>
  void onEveryTab(Check check) {
    for (int tab = 0; tab < 4; ++tab) {
      SCOPED_TRACE(tab);
      window->view().setSelectedTab(tab);
      turn();
      check();
    }
  }
  void expectNothingClipped() {
    onEveryTab([&] {
      EXPECT_EQ(form().horizontalScrollBar()->maximum(), 0);
      for (const QLabel* label : form().findChildren<QLabel*>()) {
        EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
        EXPECT_GE(label->height(), label->sizeHint().height()) << label->text().toStdString();
      }
      for (const QAbstractButton* button : form().findChildren<QAbstractButton*>()) {
        EXPECT_GE(button->width(), button->sizeHint().width()) << button->objectName().toStdString();
        EXPECT_GE(button->height(), button->sizeHint().height()) << button->objectName().toStdString();
      }
    });
    for (const TabButton* tab : window->findChildren<TabButton*>()) {
      EXPECT_GE(tab->width(), tab->sizeHint().width());
    }
  }
  int leftOf(const QWidget& widget) const { return widget.mapTo(window.get(), QPoint()).x(); }
  int rightOf(const QWidget& widget) const { return leftOf(widget) + widget.width(); }

 private:
  QPalette m_palette = QApplication::palette();
  QFont m_font = QApplication::font();
};

TEST_F(LayoutTest, ClipsNoText) {
  expectNothingClipped();
}

TEST_F(LayoutTest, ClipsNoTextWithAThirdLargerFont) {
  QFont large = QApplication::font();
  large.setPointSizeF(large.pointSizeF() * 1.33);
  QApplication::setFont(large);
  open(test::General);
  expectNothingClipped();
}

TEST_F(LayoutTest, ClipsNoTextWithTextTwiceAsLargeInEitherDisplay) {
  const QSize usual = window->size();
  const test::TextSize size(2);
  for (const bool isFull : {false, true}) {
    defaults.setBool(kFullEmulationKey, isFull);
    open(test::General);
    expectNothingClipped();
    EXPECT_GT(window->width(), usual.width());
  }
}

TEST_F(LayoutTest, GrowsAndShrinksWithTheTextWhileItIsShown) {
  const QSize usual = window->size();
  {
    const test::TextSize size(2);
    turn();
    expectNothingClipped();
    EXPECT_GT(window->width(), usual.width());
  }
  turn();
  expectNothingClipped();
  EXPECT_EQ(window->size(), usual);
}

TEST_F(LayoutTest, AllRowsShareOneGrid) {
  std::set<int> labels;
  std::set<int> ends;
  std::set<int> stretched;
  onEveryTab([&] {
    for (QLabel* label : form().findChildren<QLabel*>()) {
      if (label->buddy() == nullptr) continue;
      labels.insert(leftOf(*label));
      ends.insert(rightOf(*label->buddy()));
      EXPECT_GE(label->parentWidget()->height(), 36);
      EXPECT_LE(label->parentWidget()->height(), 40);
    }
    for (const QWidget* each : form().findChildren<QWidget*>()) {
      if (qobject_cast<const QComboBox*>(each) || qobject_cast<const SegmentedPicker*>(each) ||
          qobject_cast<const SliderRow*>(each) || each->objectName() == QLatin1String("startupCommand")) {
        stretched.insert(leftOf(*each));
      }
    }
  });
  EXPECT_EQ(labels.size(), 1U);
  EXPECT_EQ(ends.size(), 1U);
  EXPECT_EQ(stretched.size(), 1U);
}

TEST_F(LayoutTest, ValueTextsAreFiftyWideBesideTheirSliders) {
  window->view().setSelectedTab(test::Appearance);
  for (const char* name : {"fontSize", "lineSpacing", "opacity"}) {
    const auto& row = find<SliderRow>(name);
    const auto* text = row.findChild<SecondaryLabel*>(QStringLiteral("value"));
    const auto* slider = row.findChild<Slider*>();
    EXPECT_EQ(text->width(), 50);
    EXPECT_GT(text->x(), slider->geometry().right());
    EXPECT_GT(slider->width(), 200);
  }
}

TEST_F(LayoutTest, TheTabKeyReachesEveryControlFromTopToBottom) {
  onEveryTab([&] {
    QWidget* bar = window->findChild<PreferencesTabBar*>();
    QAbstractButton* selected = nullptr;
    for (auto* each : bar->findChildren<TabButton*>()) {
      if (each->isChecked()) selected = each;
    }
    ASSERT_NE(selected, nullptr);
    selected->setFocus(Qt::TabFocusReason);
    std::vector<QWidget*> reached;
    for (test::press(*window, Qt::Key_Tab); window->focusWidget() != selected; test::press(*window, Qt::Key_Tab)) {
      ASSERT_LT(reached.size(), 30U);
      reached.push_back(window->focusWidget());
      // Scrolled completely into view.
      const QRect seen(form().viewport()->mapTo(window.get(), QPoint()), form().viewport()->size());
      EXPECT_TRUE(seen.contains(QRect(reached.back()->mapTo(window.get(), QPoint()), reached.back()->size())))
          << reached.back()->objectName().toStdString();
      EXPECT_FALSE(reached.back()->accessibleName().isEmpty() &&
                   QAccessible::queryAccessibleInterface(reached.back())->text(QAccessible::Name).isEmpty());
    }
    const auto top = [&](const QWidget* each) { return each->mapTo(form().widget(), QPoint()).y(); };
    EXPECT_TRUE(std::ranges::is_sorted(reached, {}, top));
    std::size_t stops = 0;
    for (QWidget* each : form().findChildren<QWidget*>()) {
      const bool isControl = qobject_cast<Switch*>(each) || qobject_cast<Slider*>(each) ||
                             qobject_cast<QComboBox*>(each) || qobject_cast<QLineEdit*>(each) ||
                             qobject_cast<SegmentedPicker*>(each) || qobject_cast<DestructiveButton*>(each);
      if (isControl && each->isEnabled()) ++stops;
    }
    EXPECT_EQ(reached.size(), stops);
  });
}

TEST_F(LayoutTest, AFormScrollsToTheControlThatGetsTheFocusFirst) {
  window->view().setSelectedTab(test::Advanced);
  turn();
  form().verticalScrollBar()->setValue(form().verticalScrollBar()->maximum());
  window->findChild<TabButton*>(QStringLiteral("Advanced"))->setFocus(Qt::TabFocusReason);
  test::press(*window, Qt::Key_Tab);
  EXPECT_EQ(window->focusWidget()->objectName(), QStringLiteral("scrollbackLines"));
  EXPECT_GE(window->focusWidget()->mapTo(form().viewport(), QPoint()).y(), 0);
}

TEST_F(LayoutTest, ControlsAreNamedAfterTheirLabels) {
  onEveryTab([&] {
    for (const QLabel* label : form().findChildren<QLabel*>()) {
      QWidget* control = label->buddy();
      if (control == nullptr) continue;
      if (control->focusProxy() != nullptr) control = control->focusProxy();
      EXPECT_EQ(QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name), label->text());
    }
  });
}

TEST_F(LayoutTest, TheKeyboardScrollsAForm) {
  window->view().setSelectedTab(test::Advanced);
  find<Switch>("useAlternateScreenBuffer").setFocus(Qt::TabFocusReason);
  form().verticalScrollBar()->setValue(0);
  test::press(*window, Qt::Key_PageDown);
  EXPECT_GT(form().verticalScrollBar()->value(), 0);
  test::press(*window, Qt::Key_PageUp);
  EXPECT_EQ(form().verticalScrollBar()->value(), 0);
}

TEST_F(LayoutTest, TheWheelOverAControlScrollsTheFormAndChangesNothing) {
  defaults.setString("startupShell", "/bin/sh");
  const auto isLeft = [](QWidget& control) {
    const QPointF place = control.rect().center();
    QWheelEvent event(place, control.mapToGlobal(place), {}, QPoint(0, 120), Qt::NoButton, {}, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&control, &event);
    return !event.isAccepted();
  };
  turn();
  EXPECT_TRUE(isLeft(find("startupShell")));
  EXPECT_EQ(defaults.stringForKey("startupShell"), "/bin/sh");
  window->view().setSelectedTab(test::Appearance);
  EXPECT_TRUE(isLeft(find<SliderRow>("fontSize").slider()));
  EXPECT_EQ(config.fontSize, 14.0);
}

TEST_F(LayoutTest, FollowsThePaletteWhileItIsShown) {
  onEveryTab([&] {
    QApplication::setPalette(QApplication::style()->standardPalette());
    turn();
    const QImage light = window->grab().toImage();
    QApplication::setPalette(test::darkPalette());
    turn();
    const QImage dark = window->grab().toImage();
    const ControlColors colors(test::darkPalette());
    const QWidget* label = form().findChildren<QLabel*>().at(1);
    const QPoint besideText = label->mapTo(window.get(), QPoint(-3, label->height() / 2));
    EXPECT_EQ(dark.pixelColor(besideText), colors.card);
    EXPECT_EQ(dark.pixelColor(QPoint(5, window->height() - 3)), colors.window);
    EXPECT_NE(light.pixelColor(besideText), dark.pixelColor(besideText));
    // A window that was opened with the dark palette looks the same.
    PreferencesWindow fresh(config, defaults, shells);
    fresh.view().setSelectedTab(window->view().selectedTab());
    test::shown(fresh);
    turn();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    turn();
    EXPECT_EQ(window->grab().toImage(), fresh.grab().toImage());
  });
}

TEST_F(LayoutTest, IsDrawnWithTwiceThePixelsOnAHighResolutionScreen) {
  onEveryTab([&] {
    QPixmap fine(window->size() * 2);
    fine.setDevicePixelRatio(2);
    window->render(&fine);
    const QImage sharp = fine.toImage();
    const QImage plain = window->grab().toImage();
    ASSERT_EQ(sharp.size(), QSize(1200, 900));
    // The same picture, but not merely magnified.
    const QImage reduced = sharp.scaled(plain.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    qint64 difference = 0;
    for (int y = 0; y < plain.height(); ++y) {
      for (int x = 0; x < plain.width(); ++x) {
        difference += std::abs(qGray(reduced.pixel(x, y)) - qGray(plain.pixel(x, y)));
      }
    }
    EXPECT_LT(difference / (plain.width() * plain.height()), 4);
    QImage magnified = plain.scaled(sharp.size());
    magnified.setDevicePixelRatio(2);
    EXPECT_NE(magnified.convertToFormat(sharp.format()), sharp);
  });
}

}  // namespace
}  // namespace zolt
