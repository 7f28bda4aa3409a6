#include <gtest/gtest.h>
#include <unistd.h>

#include <QProcess>

namespace zolt {
namespace {

// Runs in a separate mount namespace, where brew's two usual locations contain only what the test puts there.
class BrewPlaceTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!runs(QStringLiteral("true"))) GTEST_SKIP() << "this system allows no mount namespace";
  }

  // What the process's shared manager finds after `preparation`; each brew's only result is the name of its own
  // location.
  std::string foundAfter(const char* preparation) {
    const QString script = QStringLiteral(
                               "put() { mkdir -p \"$1\" && printf '#!/bin/sh\\necho %s\\n' \"$1\" >\"$1/brew\" && "
                               "chmod $2 \"$1/brew\"; }\n"
                               "set -e\n%1\nexec %2 x\n")
                               .arg(QString::fromUtf8(preparation), QStringLiteral(ZOLT_SEARCH_SHARED));
    EXPECT_TRUE(runs(script)) << m_process.readAllStandardError().toStdString();
    return m_process.readAllStandardOutput().trimmed().toStdString();
  }

 private:
  bool runs(const QString& script) {
    QStringList arguments{QStringLiteral("--mount")};
    if (geteuid() != 0) arguments << QStringLiteral("--map-root-user");
    arguments << QStringLiteral("sh") << QStringLiteral("-c")
              << QStringLiteral("mount -t tmpfs none /opt && mount -t tmpfs none /usr/local/bin || exit 1\n") + script;
    m_process.start(QStringLiteral("unshare"), arguments);
    return m_process.waitForFinished() && m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
  }

  QProcess m_process;
};

TEST_F(BrewPlaceTest, IsTheFirstIfBothExist) {
  EXPECT_EQ(foundAfter("put /opt/homebrew/bin 755; put /usr/local/bin 755"), "/opt/homebrew/bin");
}

TEST_F(BrewPlaceTest, IsTheSecondIfTheFirstIsMissingOrNotExecutable) {
  EXPECT_EQ(foundAfter("put /usr/local/bin 755"), "/usr/local/bin");
  EXPECT_EQ(foundAfter("put /opt/homebrew/bin 644; put /usr/local/bin 755"), "/usr/local/bin");
}

TEST_F(BrewPlaceTest, IsNowhereElse) {
  EXPECT_EQ(foundAfter("put /opt/bin 755; PATH=/opt/bin:$PATH"), "none");
}

}  // namespace
}  // namespace zolt
