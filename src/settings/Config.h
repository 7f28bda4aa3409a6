#pragma once

#include <QObject>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/UserDefaults.h"

namespace zolt {

/// The store of the terminal's appearance settings, as the preferences show and edit them. Observable; main thread.
///
/// Values change in memory and reach the user's settings only with `save`. Nothing but the preferences reads them.
class Config : public QObject {
  Q_OBJECT

 public:
  /// In the order in which they are offered.
  enum class ColorScheme { Dark, Light, System };
  enum class CursorStyle { Block, Line, Bar };

  static constexpr std::array<std::pair<ColorScheme, std::string_view>, 3> colorSchemes{
      {{ColorScheme::Dark, "Dark"}, {ColorScheme::Light, "Light"}, {ColorScheme::System, "System"}}};
  static constexpr std::array<std::pair<CursorStyle, std::string_view>, 3> cursorStyles{
      {{CursorStyle::Block, "Block"}, {CursorStyle::Line, "Line"}, {CursorStyle::Bar, "Bar"}}};

  /// A value that announces each assignment, also that of an equal value, before it takes it.
  template <class T>
  class Published {
   public:
    Published(Config& owner, T initial) : m_owner(owner), m_value(std::move(initial)) {}
    Published(const Published&) = delete;

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
    T m_value;
  };

  /// The initial values; `defaults`, which must outlive the store, is not read.
  explicit Config(UserDefaults& defaults);

  /// The process's one store, over the user's own settings; made on first use.
  static Config& shared();

  /// Reads the stored values. No defaults are registered: a flag that is absent reads as false, deliberately also where
  /// it is true until then.
  void setupDefaults();
  /// Writes every value but the line spacing, which is deliberately one of this run alone.
  void save();

  Published<ColorScheme> theme{*this, ColorScheme::Dark};
  Published<double> fontSize{*this, 14.0};
  Published<std::string> fontFamily{*this, "SF Mono"};
  Published<double> lineSpacing{*this, 1.2};
  Published<CursorStyle> cursorStyle{*this, CursorStyle::Block};
  Published<bool> cursorBlink{*this, true};
  Published<std::int64_t> scrollbackLines{*this, 10000};
  Published<double> opacity{*this, 1.0};
  Published<bool> blurBackground{*this, false};

 Q_SIGNALS:
  /// Before a property takes a value.
  void objectWillChange();

 private:
  UserDefaults& m_defaults;
};

/// The raw value of a case: what is stored, and its label.
std::string_view rawValue(Config::ColorScheme scheme);
std::string_view rawValue(Config::CursorStyle style);
/// The case with exactly this raw value.
std::optional<Config::ColorScheme> colorSchemeOf(std::string_view rawValue);
std::optional<Config::CursorStyle> cursorStyleOf(std::string_view rawValue);

}  // namespace zolt
