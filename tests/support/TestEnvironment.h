#pragma once

#include <QTemporaryDir>
#include <optional>

namespace zolt::test {

/// The environment of a test program, the same whoever runs it. Of the user's variables it keeps only those that locate
/// programs and libraries. Home, settings and runtime folder are empty temporary ones; locale, fonts and display are
/// the tests' own. Create it before the application object.
class TestEnvironment {
 public:
  TestEnvironment();

  /// The family that ZOLT_TEST_FONT asks for.
  static QString fontFamily();
  /// Whether there is a font configuration for the family and it is installed; reports on standard error what is
  /// missing. Needs the application object.
  static bool hasFontFamily();

 private:
  std::optional<QTemporaryDir> m_folder;
};

}  // namespace zolt::test
