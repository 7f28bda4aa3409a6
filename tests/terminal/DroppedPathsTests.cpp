#include "terminal/input/DroppedPaths.h"

#include <gtest/gtest.h>

#include <QUrl>

namespace zolt {
namespace {

using Route = DroppedText::Route;

TEST(ShellQuoted, QuotesWhatNeedsIt) {
  struct Row {
    std::string_view word;
    std::string_view quoted;
  };
  const Row rows[] = {
      {"/home/me/a-b_c.tar.gz", "/home/me/a-b_c.tar.gz"},
      {"/a@b%c+d:e,f", "/a@b%c+d:e,f"},
      {"/日本/ünï", "/日本/ünï"},
      {"/e\u0301", "/e\u0301"},
      {"", "''"},
      {"/a b", "'/a b'"},
      {"/$HOME;rm", "'/$HOME;rm'"},
      {"/it's", "'/it'\\''s'"},
      {"'", "''\\'''"},
      {"/a\"b\\c`d`", "'/a\"b\\c`d`'"},
      {"~", "'~'"},
      {"=ls", "'=ls'"},
      {"/a*b?[c]{d}!#&|<>()", "'/a*b?[c]{d}!#&|<>()'"},
      {"/a\u00A0b", "'/a\u00A0b'"},
      {"/a\u3000b", "'/a\u3000b'"},
      {"/a\u202Eb", "'/a\u202Eb'"},
      {"/a\nb", "$'/a\\nb'"},
      {"/a\tb\rc", "$'/a\\tb\\rc'"},
      {"/a\x1B[0m", "$'/a\\033[0m'"},
      {"/a\x1B"
       "1",
       "$'/a\\0331'"},
      {"/a\x7F", "$'/a\\177'"},
      {"/it's\n\\é $x", "$'/it\\'s\\n\\\\é $x'"},
      {"/a\u009Bb", "$'/a\\302\\233b'"},
      {"/caf\xE9", "$'/caf\\351'"},
      {"/\xC3", "$'/\\303'"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(shellQuoted(row.word), row.quoted) << row.word;
  }
}

std::optional<DroppedText> dropped(std::initializer_list<const char*> addresses, const char* text = "") {
  QMimeData data;
  QList<QUrl> urls;
  for (const char* address : addresses) {
    urls.append(QUrl::fromEncoded(address));
  }
  if (!urls.isEmpty()) data.setUrls(urls);
  if (*text != '\0') data.setText(QString::fromUtf8(text));
  return droppedText(data, QStringLiteral("Here"));
}

DroppedText typed(const char* text) {
  return {.route = Route::Typed, .text = text};
}

TEST(DroppedPaths, TypesTheQuotedPathsOfLocalFiles) {
  EXPECT_EQ(dropped({"file:///tmp/a"}), typed("/tmp/a "));
  EXPECT_EQ(dropped({"file:///tmp/a%20b", "file:///c"}), typed("'/tmp/a b' /c "));
  EXPECT_EQ(dropped({"file:///caf%C3%A9"}), typed("/café "));
  EXPECT_EQ(dropped({"file:///caf%E9"}), typed("$'/caf\\351' ")) << "the name is not UTF-8";
  EXPECT_EQ(dropped({"file:///a%0Ab"}), typed("$'/a\\nb' "));
  EXPECT_EQ(dropped({"file:///100%25"}), typed("/100% "));
  EXPECT_EQ(dropped({"file:///a%23b%3Fc"}), typed("'/a#b?c' "));
}

TEST(DroppedPaths, KnowsTheNamesOfThisMachine) {
  EXPECT_EQ(dropped({"file://localhost/a"}), typed("/a "));
  EXPECT_EQ(dropped({"file://here/a"}), typed("/a "));
  EXPECT_EQ(dropped({"file://there/a%20b"}), typed("file://there/a%20b "));
}

TEST(DroppedPaths, TypesOtherAddressesQuoted) {
  EXPECT_EQ(dropped({"https://en.example/a"}), typed("https://en.example/a "));
  EXPECT_EQ(dropped({"https://en.example/a?b=c&d"}), typed("'https://en.example/a?b=c&d' "));
  EXPECT_EQ(dropped({"file:///a", "https://en.example/"}), typed("/a https://en.example/ "));
}

TEST(DroppedPaths, LeavesOutWhatIsNoPath) {
  EXPECT_EQ(dropped({"file:///a%00b", "file:///c"}), typed("/c "));
  EXPECT_EQ(dropped({"", "file:///c"}), typed("/c "));
}

TEST(DroppedPaths, PastesTextAndPrefersAddresses) {
  EXPECT_EQ(dropped({}, "rm -rf\n'x'"), (DroppedText{.route = Route::Pasted, .text = "rm -rf\n'x'"}));
  EXPECT_EQ(dropped({"file:///a"}, "a text"), typed("/a "));
  EXPECT_EQ(dropped({}), std::nullopt);
}

}  // namespace
}  // namespace zolt
