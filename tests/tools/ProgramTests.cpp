#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include "tools/Program.h"

namespace zolt {
namespace {

test::ProgramResult zolt(const std::vector<std::string>& arguments,
                         const std::map<std::string, std::string>& environment = {}) {
  return test::runProgram(ZOLT_PROGRAM, arguments, {}, environment);
}

TEST(ZoltProgram, EndsWithTheStatusOfTheProgramItRuns) {
  EXPECT_EQ(zolt({"-e", "sh", "-c", "exit 7"}).status, 7);
  EXPECT_EQ(zolt({"-e", "true"}).status, 0);
}

TEST(ZoltProgram, EndsWith128PlusTheNumberOfTheSignal) {
  EXPECT_EQ(zolt({"-e", "sh", "-c", "kill -9 $$"}).status, 137);
}

TEST(ZoltProgram, EndsWith127WhenTheProgramIsMissing) {
  EXPECT_EQ(zolt({"-e", "/no/such/program"}).status, 127);
}

TEST(ZoltProgram, EndsEvenIfABackgroundProcessKeepsPrinting) {
  QTemporaryDir folder;
  const std::string pidFile = folder.filePath(QStringLiteral("pid")).toStdString();
  const std::string script = "(trap '' HUP; exec yes) & echo $! > " + pidFile + "; exit 3";
  EXPECT_EQ(zolt({"-e", "sh", "-c", script}).status, 3);
  test::runProgram("/bin/sh", {"-c", "kill -9 $(cat " + pidFile + ")"});
}

TEST(ZoltProgram, PassesArgumentsUnchanged) {
  QTemporaryDir folder;
  const std::string file = folder.filePath(QStringLiteral("out")).toStdString();
  EXPECT_EQ(
      zolt({"-e", "sh", "-c", "printf '%s|' \"$@\" > " + file, "sh", "a b", "", "$HOME", "--version", "'"}).status, 0);
  QFile written(QString::fromStdString(file));
  ASSERT_TRUE(written.open(QIODevice::ReadOnly));
  EXPECT_EQ(written.readAll().toStdString(), "a b||$HOME|--version|'|");
}

TEST(ZoltProgram, StartsInTheWorkingDirectory) {
  QTemporaryDir folder;
  EXPECT_EQ(zolt({"--working-directory", folder.path().toStdString(), "-e", "touch", "here"}).status, 0);
  EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("here"))));
}

TEST(ZoltProgram, TellsTheProgramTheSizeOfItsWindowFromItsStart) {
  QTemporaryDir folder;
  const std::string file = folder.filePath(QStringLiteral("size")).toStdString();
  EXPECT_EQ(zolt({"-e", "sh", "-c", "stty size > " + file + "; sleep 0.5; stty size >> " + file}).status, 0);
  QFile written(QString::fromStdString(file));
  ASSERT_TRUE(written.open(QIODevice::ReadOnly));
  const QByteArray first = written.readLine();
  EXPECT_NE(first, "0 0\n");
  EXPECT_EQ(written.readLine(), first) << "unchanged once the window is shown";
}

TEST(ZoltProgram, ResolvesThePathOfThePictureInTheFolderWhereItWasStarted) {
  QTemporaryDir folder;
  const std::string script = "cd " + folder.path().toStdString() + " && exec " + ZOLT_PROGRAM +
                             " --working-directory / --screenshot here.png -e true";
  EXPECT_EQ(test::runProgram("/bin/sh", {"-c", script}).status, 0);
  EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("here.png"))));
}

TEST(ZoltProgram, WritesAPictureOfAllTheOutput) {
  QTemporaryDir folder;
  const std::string file = folder.filePath(QStringLiteral("picture.png")).toStdString();
  EXPECT_EQ(zolt({"--screenshot", file, "-e", "printf", "\\033[1;31mMMMM\\033[0m plain"}).status, 0);
  const QImage picture(QString::fromStdString(file));
  ASSERT_EQ(picture.size(), QSize(900, 600));
  int red = 0;
  int white = 0;
  int other = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QColor pixel = picture.pixelColor(x, y);
      red += pixel.red() > 150 && pixel.green() < 40 && pixel.blue() < 40 ? 1 : 0;
      white += pixel.red() > 200 && pixel.green() > 200 && pixel.blue() > 200 ? 1 : 0;
      other += pixel.green() > pixel.red() + 60 || pixel.blue() > pixel.red() + 60 ? 1 : 0;
    }
  }
  EXPECT_GT(red, 30);
  EXPECT_GT(white, 30);
  EXPECT_EQ(other, 0);
}

TEST(ZoltProgram, ReportsAPictureThatCannotBeWritten) {
  const test::ProgramResult result = zolt({"--screenshot", "/no/such/folder/a.png", "-e", "true"});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.errors.ends_with("zolt: cannot write /no/such/folder/a.png\n")) << result.errors;
}

TEST(ZoltProgram, RejectsAWrongOptionWithOneLineAndStatusTwo) {
  for (const auto& arguments : std::vector<std::vector<std::string>>{{"--nonsense"},
                                                                     {"-e"},
                                                                     {"--working-directory"},
                                                                     {"--working-directory", "/no/such/folder"},
                                                                     {"--screenshot", "a.png"},
                                                                     {"word"},
                                                                     {"two\nlines"},
                                                                     {"--full-emulation=yes"}}) {
    const test::ProgramResult result = zolt(arguments);
    EXPECT_EQ(result.status, 2) << test::joined(arguments);
    EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << result.errors;
    EXPECT_TRUE(result.errors.starts_with("zolt: "));
  }
}

TEST(ZoltProgram, ReportsInOneLineThatThereIsNoDisplay) {
  const std::map<std::string, std::string> none{{"QT_QPA_PLATFORM", ""}, {"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}};
  const std::map<std::string, std::string> unreachable{
      {"QT_QPA_PLATFORM", ""}, {"DISPLAY", ":4711"}, {"WAYLAND_DISPLAY", ""}};
  for (const auto& environment : {none, unreachable}) {
    const test::ProgramResult result = zolt({}, environment);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << result.errors;
    EXPECT_NE(result.errors.find("cannot open a display"), std::string::npos) << result.errors;
  }
}

TEST(ZoltProgram, NeedsNoDisplayToPrintItsVersionAndOptions) {
  const std::map<std::string, std::string> none{{"QT_QPA_PLATFORM", ""}, {"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}};
  EXPECT_EQ(zolt({"--version"}, none).output, "Zolt " ZOLT_VERSION "\n");
  const std::string help = zolt({"--help"}, none).output;
  EXPECT_NE(help.find("--screenshot FILE"), std::string::npos);
  EXPECT_NE(help.find("--working-directory DIR"), std::string::npos);
}

}  // namespace
}  // namespace zolt
