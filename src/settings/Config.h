#pragma once

#include <QObject>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/UserDefaults.h"

namespace zolt {

/// The store of the terminal's appearance settings, which the preferences show and edit. Observable; main thread.
///
/// Each property is one row of the settings table: declaring it is all that loading, saving, resetting and
/// `zolt-inspect defaults` need. Values change in memory and reach the user's settings only with `save`. Only the
/// preferences and the full emulation read them.
class Config : public QObject {
  Q_OBJECT

 public:
  /// In display order.
  enum class ColorScheme { Dark, Light, System };
  enum class CursorStyle { Block, Line, Bar };

  static constexpr std::array<std::pair<ColorScheme, std::string_view>, 3> colorSchemes{
      {{ColorScheme::Dark, "Dark"}, {ColorScheme::Light, "Light"}, {ColorScheme::System, "System"}}};
  static constexpr std::array<std::pair<CursorStyle, std::string_view>, 3> cursorStyles{
      {{CursorStyle::Block, "Block"}, {CursorStyle::Line, "Line"}, {CursorStyle::Bar, "Bar"}}};
  static constexpr const auto& casesOf(ColorScheme) { return colorSchemes; }
  static constexpr const auto& casesOf(CursorStyle) { return cursorStyles; }

  /// What saves a changed value.
  enum class Saving {
    OnChange,    ///< the change itself: all values are saved
    WithOthers,  ///< the next save, whatever caused it; the change itself while the full emulation is on
    Never,       ///< nothing: the value lasts as long as the process
  };

  /// What a slider offers, both ends included; it limits no stored value.
  struct Range {
    double first = 0;
    double last = 0;
    double step = 0;  ///< 0: continuous
  };

  template <class T>
  struct Row {
    const char* key;      ///< in the stored settings, and the name of the control
    const char* label;    ///< in the preferences
    const char* section;  ///< its section there
    T initial;  ///< also stands in for a missing text and for a number that is absent or 0; what a reset restores
    Saving saving = Saving::WithOthers;
    int resetPosition = 0;  ///< counted from 1; 0: a reset leaves the value alone
    Range range{};
  };

  /// A setting. It announces each assignment before it takes effect, even of an equal value.
  template <class T>
  class Published {
   public:
    Published(Config& owner, const Row<T>& row) : m_owner(owner), m_row(row), m_value(row.initial) {
      owner.m_settings.push_back(this);
    }
    Published(const Published&) = delete;

    const Row<T>& row() const { return m_row; }
    const T& value() const { return m_value; }
    operator const T&() const { return m_value; }
    Published& operator=(T value) {
      Q_EMIT m_owner.objectWillChange();
      m_value = std::move(value);
      return *this;
    }
    Published& operator=(const Published&) = delete;

   private:
    Config& m_owner;
    Row<T> m_row;
    T m_value;
  };

  using Setting = std::variant<Published<ColorScheme>*, Published<CursorStyle>*, Published<double>*,
                               Published<std::int64_t>*, Published<bool>*, Published<std::string>*>;

  /// The initial values; `defaults`, which must outlive the store, is not read.
  explicit Config(UserDefaults& defaults);

  /// The process's shared store, with the user's own settings; created on first use.
  static Config& shared();

  /// Every setting, in the order of the table, in which they are loaded and saved.
  const std::vector<Setting>& settings() const { return m_settings; }

  /// Reads the stored values. No defaults are registered: an absent flag deliberately reads as false, whatever its
  /// initial value.
  void setupDefaults();
  /// Writes every value that is ever stored, changed or not.
  void save();
  /// Assigns the initial values in the order of a reset; saves nothing.
  void assignDefaults();

 private:
  // Declared before the settings, which register themselves here.
  UserDefaults& m_defaults;
  std::vector<Setting> m_settings;

 public:
  // The settings table, one row per setting: key, label, section, initial value, saving, place in a reset, range. The
  // line spacing is deliberately not stored; the full emulation stores one of its own.
  // clang-format off
  Published<ColorScheme>  theme{          *this, {"theme",           "Color Scheme",     "Theme",    ColorScheme::Dark,  Saving::OnChange,   3}};
  Published<double>       fontSize{       *this, {"fontSize",        "Size",             "Font",     14.0,               Saving::OnChange,   1, {8, 72, 1}}};
  Published<std::string>  fontFamily{     *this, {"fontFamily",      "Font Family",      "Font",     "SF Mono",          Saving::WithOthers, 2}};
  Published<double>       lineSpacing{    *this, {"lineSpacing",     "Line Spacing",     "Font",     1.2,                Saving::Never,      0, {1.0, 2.0, 0.1}}};
  Published<CursorStyle>  cursorStyle{    *this, {"cursorStyle",     "Style",            "Cursor",   CursorStyle::Block, Saving::WithOthers, 4}};
  Published<bool>         cursorBlink{    *this, {"cursorBlink",     "Blink cursor",     "Cursor",   true,               Saving::OnChange,   5}};
  Published<std::int64_t> scrollbackLines{*this, {"scrollbackLines", "Scrollback Lines", "Terminal", 10000,              Saving::WithOthers, 6}};
  Published<double>       opacity{        *this, {"opacity",         "Opacity",          "Window",   1.0,                Saving::OnChange,   7, {0.3, 1.0}}};
  Published<bool>         blurBackground{ *this, {"blurBackground",  "Blur background",  "Window",   false,              Saving::WithOthers, 8}};
  // clang-format on

 Q_SIGNALS:
  /// Before a property changes.
  void objectWillChange();
};

/// A text setting that its view binds directly to the stored value; the store above neither reads nor writes it.
struct BoundText {
  const char* key;
  const char* absent;  ///< the value when nothing is stored
};
inline constexpr BoundText kStartupShell{.key = "startupShell", .absent = ""};
inline constexpr BoundText kStartupCommand{.key = "startupCommand", .absent = ""};
inline constexpr BoundText kSelectedTheme{.key = "selectedTheme", .absent = "Dark"};
/// Where the preferences were left: "x,y".
inline constexpr BoundText kPreferencesPlace{.key = "preferencesPlace", .absent = ""};

/// The raw value of a case: what is stored, and its label.
std::string_view rawValue(Config::ColorScheme scheme);
std::string_view rawValue(Config::CursorStyle style);
/// The case with exactly this raw value.
std::optional<Config::ColorScheme> colorSchemeOf(std::string_view rawValue);
std::optional<Config::CursorStyle> cursorStyleOf(std::string_view rawValue);

}  // namespace zolt
