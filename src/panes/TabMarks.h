#pragma once

#include <QMetaType>
#include <QString>
#include <optional>

namespace zolt {

/// How far a program says it is (OSC 9;4).
struct TabProgress {
  enum class Kind { None, Value, Error, Indeterminate, Paused };
  Kind kind = Kind::None;
  int percent = 0;  ///< 0...100; of `Value`, `Error` and `Paused`

  friend bool operator==(const TabProgress&, const TabProgress&) = default;
};

/// What a tab tells of its terminals besides its title.
struct TabMarks {
  bool hasActivity = false;         ///< something was printed since it was last in view
  bool hasBell = false;             ///< the bell rang since
  std::optional<int> exitStatus{};  ///< of a program that has ended
  TabProgress progress{};
  int panes = 1;

  friend bool operator==(const TabMarks&, const TabMarks&) = default;
};

/// The marks in words, for a screen reader and the tooltip: "bell, 40%". Empty if there is nothing to tell.
QString inWords(const TabMarks& marks);

}  // namespace zolt

Q_DECLARE_METATYPE(zolt::TabMarks)
