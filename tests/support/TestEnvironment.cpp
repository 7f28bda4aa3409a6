#include "support/TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QFontInfo>
#include <QProcessEnvironment>
#include <algorithm>
#include <cstdio>
#include <string_view>
#include <utility>

namespace zolt::test {

namespace {

constexpr char kFolderVariable[] = "ZOLT_TEST_FOLDER";
constexpr char kFontVariable[] = "ZOLT_TEST_FONT";

// The sanitizers and coverage tools are configured by variables, too. The time zone stays: no test depends on it.
constexpr std::string_view kKeptVariables[] = {"PATH", "TMPDIR", "TZ", "USER", "LOGNAME", "QT_PLUGIN_PATH"};
constexpr std::string_view kKeptPrefixes[] = {"ZOLT_", "GTEST_", "LD_", "DYLD_", "ASAN_", "UBSAN_", "LLVM_", "GCOV_"};

constexpr std::pair<const char*, const char*> kVariables[] = {
    {"QT_QPA_PLATFORM", "offscreen"},
    {"LC_ALL", "C.UTF-8"},
    {"SHELL", "/bin/sh"},
    {"TSAN_OPTIONS", ZOLT_TSAN_OPTIONS},
    {"LSAN_OPTIONS", ZOLT_LSAN_OPTIONS},
};

constexpr std::pair<const char*, const char*> kFolderVariables[] = {
    {"HOME", "/home"},
    {"XDG_CONFIG_HOME", "/config"},
    {"XDG_CACHE_HOME", "/cache"},
    {"XDG_RUNTIME_DIR", "/runtime"},
};

// Of the terminal that the tests were started in.
constexpr std::string_view kDroppedVariables[] = {"ZOLT_TERMINAL", "ZOLT_TOKEN"};

bool isKept(std::string_view name) {
  if (std::ranges::find(kDroppedVariables, name) != std::end(kDroppedVariables)) return false;
  return std::ranges::find(kKeptVariables, name) != std::end(kKeptVariables) ||
         std::ranges::any_of(kKeptPrefixes, [&](std::string_view prefix) { return name.starts_with(prefix); });
}

QString fontConfiguration() {
  return QStringLiteral(ZOLT_TEST_FONT_FOLDER "/%1.conf").arg(TestEnvironment::fontFamily());
}

}  // namespace

TestEnvironment::TestEnvironment() {
  for (const QString& name : QProcessEnvironment::systemEnvironment().keys()) {
    if (!isKept(name.toStdString())) qunsetenv(name.toUtf8());
  }
  // A death test's child is this program again: it uses its parent's folder, as it could not remove one of its own.
  QString folder = qEnvironmentVariable(kFolderVariable);
  if (folder.isEmpty()) {
    m_folder.emplace(QDir::tempPath() + QStringLiteral("/zolt-test-XXXXXX"));
    folder = m_folder->path();
    qputenv(kFolderVariable, QFile::encodeName(folder));
  }
  for (const auto& [name, below] : kFolderVariables) {
    const QString path = folder + QLatin1String(below);
    QDir().mkdir(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    qputenv(name, QFile::encodeName(path));
  }
  for (const auto& [name, value] : kVariables) {
    qputenv(name, value);
  }
  qputenv("FONTCONFIG_FILE", QFile::encodeName(fontConfiguration()));
}

QString TestEnvironment::fontFamily() {
  const QString family = qEnvironmentVariable(kFontVariable);
  return family.isEmpty() ? QStringLiteral(ZOLT_TEST_DEFAULT_FONT) : family;
}

bool TestEnvironment::hasFontFamily() {
#ifdef Q_OS_MACOS
  return true;  // there the system chooses the fonts
#else
  if (!QFile::exists(fontConfiguration())) {
    std::fprintf(stderr, "There is no %s: configure with ZOLT_TEST_FONT set, as ./test does.\n",
                 qUtf8Printable(fontConfiguration()));
    return false;
  }
  const QString used = QFontInfo(QFontDatabase::systemFont(QFontDatabase::FixedFont)).family();
  if (used == fontFamily()) return true;
  std::fprintf(stderr, "The tests need the font \"%s\", which is not installed; the system has \"%s\".\n",
               qUtf8Printable(fontFamily()), qUtf8Printable(used));
  return false;
#endif
}

}  // namespace zolt::test
