#pragma once

#include <QTemporaryDir>
#include <optional>

namespace zolt::test {

/// The environment of a test program, the same whoever runs it: of the user's variables only those that find programs
/// and libraries stay; home, settings and runtime folder are empty ones of its own, gone when it ends; locale, fonts
/// and display are the tests' own. To be made before the application object.
class TestEnvironment {
 public:
  TestEnvironment();

  /// The family that ZOLT_TEST_FONT asks for.
  static QString fontFamily();
  /// Whether there is a font configuration for it, and the family is installed; says on standard error what is missing.
  /// Needs the application object.
  static bool hasFontFamily();

 private:
  std::optional<QTemporaryDir> m_folder;
};

}  // namespace zolt::test
