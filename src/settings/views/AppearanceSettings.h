#pragma once

#include <QTimer>

#include "settings/Config.h"
#include "settings/views/GroupedForm.h"

namespace zolt {

class SecondaryLabel;
class SegmentedPicker;
class SliderRow;
class Switch;

/// The appearance tab: the looks that the store keeps.
///
/// A change of the theme, the font size, the blinking or the opacity, wherever it was made, has the store saved, once
/// for all changes of one turn of the event loop. The other values are deliberately saved only along with one of those.
class AppearanceSettings : public GroupedForm {
  Q_OBJECT

 public:
  /// `config` must outlive the form.
  explicit AppearanceSettings(Config& config, QWidget* parent = nullptr);

 private:
  // What is watched for changes that save.
  struct Watched {
    Config::ColorScheme theme;
    double fontSize;
    bool cursorBlink;
    double opacity;
    bool operator==(const Watched&) const = default;
  };

  Watched watched() const;
  void buildRows();
  void showValues();
  void refresh();

  Config& m_config;
  Watched m_seen;
  QTimer m_refresh;
  SegmentedPicker* m_theme = nullptr;
  SecondaryLabel* m_fontFamily = nullptr;
  SliderRow* m_fontSize = nullptr;
  SliderRow* m_lineSpacing = nullptr;
  SegmentedPicker* m_cursorStyle = nullptr;
  Switch* m_cursorBlink = nullptr;
  SliderRow* m_opacity = nullptr;
  Switch* m_blurBackground = nullptr;
};

}  // namespace zolt
