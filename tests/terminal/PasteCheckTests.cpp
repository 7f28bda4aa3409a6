#include "terminal/input/PasteCheck.h"

#include <gtest/gtest.h>

#include "text/GraphemeClusters.h"

namespace zolt {
namespace {

TEST(PasteCheck, AsksBeforeWhatTheShellWouldExecuteOrNobodySees) {
  struct Row {
    std::string_view text;
    bool mustAsk;
    std::size_t lines;
    bool hasControls;
    bool endsWithLineEnd;
    std::string_view preview;
  };
  using namespace std::string_view_literals;
  const Row rows[] = {
      {"", false, 0, false, false, ""},
      {"ls -l", false, 1, false, false, "ls -l"},
      {"a\tb", false, 1, false, false, "a␉b"},
      {"日本 é", false, 1, false, false, "日本 é"},
      {"ls\n", true, 1, false, true, "ls␍"},
      {"ls\r\n", true, 1, false, true, "ls␍"},
      {"ls\r", true, 1, false, true, "ls␍"},
      {"\n", true, 1, false, true, "␍"},
      {"a\nb", true, 2, false, false, "a␍\nb"},
      {"a\r\nb\rc\n", true, 3, false, true, "a␍\nb␍\nc␍"},
      {"a\n\n", true, 2, false, true, "a␍\n␍"},
      {"a\n\rb", true, 3, false, false, "a␍\n␍\nb"},
      {"a\x1B[201~b", true, 1, true, false, "a␛[201~b"},
      {"\0"sv, true, 1, true, false, "␀"},
      {"a\x7F", true, 1, true, false, "a␡"},
      {"a\u009Bb", true, 1, true, false, "a<U+009B>b"},
      {"a\u202Eb", false, 1, false, false, "a<U+202E>b"},
      {"a\xFF", false, 1, false, false, "a\uFFFD"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.preview);
    const PasteCheck check = checkPaste(row.text, false);
    EXPECT_EQ(check.mustAsk, row.mustAsk);
    EXPECT_EQ(check.lines, row.lines);
    EXPECT_EQ(check.hasControls, row.hasControls);
    EXPECT_EQ(check.endsWithLineEnd, row.endsWithLineEnd);
    EXPECT_EQ(check.preview, row.preview);
    const PasteCheck bracketed = checkPaste(row.text, true);
    EXPECT_FALSE(bracketed.mustAsk);
    EXPECT_EQ(bracketed.lines, row.lines);
    EXPECT_EQ(bracketed.hasControls, row.hasControls);
  }
}

std::string preview(const std::string& text) {
  return checkPaste(text, false).preview;
}

std::string times(std::size_t count, std::string_view text) {
  std::string repeated;
  for (std::size_t i = 0; i < count; ++i) {
    repeated += text;
  }
  return repeated;
}

TEST(PasteCheck, PreviewsTheFirstLines) {
  const std::string most = times(kPreviewLines, "a\n");
  const std::string shown = times(kPreviewLines - 1, "a␍\n") + "a␍";
  EXPECT_EQ(preview(most), shown);
  EXPECT_EQ(preview(most + "b"), shown + "\n…");
  EXPECT_EQ(preview(most + "b\nc\nd\n"), shown + "\n…");
  EXPECT_EQ(checkPaste(most + "b\nc", false).lines, kPreviewLines + 2);
}

TEST(PasteCheck, PreviewsTheFirstColumns) {
  EXPECT_EQ(preview(times(80, "a")), times(80, "a"));
  EXPECT_EQ(preview(times(81, "a")), times(80, "a") + "…");
  EXPECT_EQ(preview(times(81, "a") + "\nb"), times(80, "a") + "…␍\nb");
  EXPECT_EQ(preview(times(40, "日")), times(40, "日"));
  EXPECT_EQ(preview(times(1, "a") + times(40, "日")), times(1, "a") + times(39, "日") + "…")
      << "half a character does not fit";
  EXPECT_EQ(preview(times(81, "e\u0301")), times(80, "e\u0301") + "…");
  EXPECT_EQ(preview(times(41, "\U0001F469\u200D\U0001F4BB")), times(40, "\U0001F469\u200D\U0001F4BB") + "…");
}

TEST(PasteCheck, PreviewsLittleOfAnEndlessCluster) {
  const std::string text = times(1, "ab") + times(1'000'000, "\u0301");
  const std::string shown = preview(text);
  EXPECT_EQ(shown, "a…");
  EXPECT_TRUE(isValidUtf8(shown));
}

TEST(PasteCheck, FindsControlsFarBehindThePreview) {
  const PasteCheck check = checkPaste(times(100'000, "a") + "\x1B", false);
  EXPECT_TRUE(check.hasControls);
  EXPECT_TRUE(check.mustAsk);
}

}  // namespace
}  // namespace zolt
