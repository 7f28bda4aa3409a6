#include "history/HistoryBlock.h"

#include <algorithm>
#include <array>
#include <bit>

namespace zolt {

namespace {

enum class Section : std::uint8_t {
  Text = 1,
  Styles = 2,
  Runs = 3,
  SoftWraps = 4,
  Marks = 5,
  PackedStyles = 6,
  Links = 7,
  ListedStyles = 8,
  Clusters = 9,  // without meaning but that it is there
};

// The flags of an encoded style.
enum StyleFlag : std::uint8_t { Bold = 1, Italic = 2, Underlined = 4, Struck = 8, HasBackground = 16 };

constexpr std::size_t kMaxNumberBytes = 10;

char* writeNumber(char* out, std::uint64_t number) {
  for (; number >= 0x80; number >>= 7) {
    *out++ = static_cast<char>(0x80 | (number & 0x7F));
  }
  *out++ = static_cast<char>(number);
  return out;
}

void putNumber(std::string& out, std::uint64_t number) {
  std::array<char, kMaxNumberBytes> bytes;
  out.append(
      std::string_view(bytes.data(), static_cast<std::size_t>(writeNumber(bytes.data(), number) - bytes.data())));
}

void putEightBytes(std::string& out, std::uint64_t bits) {
  std::array<char, 8> bytes;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<char>(bits >> 8 * i & 0xFF);
  }
  out.append(bytes.data(), bytes.size());
}

void putDouble(std::string& out, double value) {
  putEightBytes(out, std::bit_cast<std::uint64_t>(value));
}

void putColor(std::string& out, const Color& color) {
  for (const double part : {color.red, color.green, color.blue, color.alpha}) {
    putDouble(out, part);
  }
}

void putSection(std::string& out, Section section, std::string_view content) {
  if (content.empty()) return;
  putNumber(out, static_cast<std::uint64_t>(section));
  putNumber(out, content.size());
  out += content;
}

// Maps small signed numbers to small unsigned ones.
std::uint32_t zigzag(std::int32_t number) {
  return (static_cast<std::uint32_t>(number) << 1) ^ static_cast<std::uint32_t>(number >> 31);
}

std::int32_t unzigzag(std::uint32_t number) {
  return static_cast<std::int32_t>((number >> 1) ^ (0U - (number & 1)));
}

// Reads what the functions above wrote. After an error everything reads as 0 and `failed()` is true.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : m_rest(bytes) {}

  bool failed() const { return m_failed; }
  bool atEnd() const { return m_failed || m_rest.empty(); }

  std::uint64_t number() {
    std::uint64_t number = 0;
    for (int shift = 0; shift < 63; shift += 7) {
      if (m_rest.empty()) break;
      const auto byte = static_cast<std::uint8_t>(m_rest.front());
      m_rest.remove_prefix(1);
      number |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
      if ((byte & 0x80) == 0) return number;
    }
    m_failed = true;
    return 0;
  }

  std::string_view bytes(std::uint64_t count) {
    if (count > m_rest.size()) m_failed = true;
    if (m_failed) return {};
    const std::string_view taken = m_rest.substr(0, count);
    m_rest.remove_prefix(count);
    return taken;
  }

  std::uint64_t eightBytes() {
    const std::string_view eight = bytes(8);
    std::uint64_t bits = 0;
    for (std::size_t i = eight.size(); i-- > 0;) {
      bits = bits << 8 | static_cast<std::uint8_t>(eight[i]);
    }
    return bits;
  }

  double real() { return std::bit_cast<double>(eightBytes()); }

  Color color() {
    Color color;
    for (double* part : {&color.red, &color.green, &color.blue, &color.alpha}) {
      *part = real();
    }
    return color;
  }

 private:
  std::string_view m_rest;
  bool m_failed = false;
};

TextAttributes readListedStyle(Reader& reader) {
  TextAttributes style;
  const std::uint64_t flags = reader.number();
  style.font.weight = (flags & Bold) != 0 ? FontWeight::Bold : FontWeight::Regular;
  style.font.slant = (flags & Italic) != 0 ? FontSlant::Italic : FontSlant::Upright;
  style.underline = (flags & Underlined) != 0 ? Line::Single : Line::None;
  style.strikethrough = (flags & Struck) != 0 ? Line::Single : Line::None;
  style.font.size = reader.real();
  style.foreground = reader.color();
  if ((flags & HasBackground) != 0) style.background = reader.color();
  return style;
}

void readStyles(Reader reader, HistoryBlock& block, bool& valid) {
  while (!reader.atEnd()) {
    block.styles.push_back(StyleCode::fromBits(reader.eightBytes()));
  }
  valid = valid && !reader.failed();
}

void readListedStyles(Reader reader, HistoryBlock& block, bool& valid) {
  while (!reader.atEnd()) {
    block.listedStyles.push_back(readListedStyle(reader));
  }
  valid = valid && !reader.failed();
}

void readRuns(Reader reader, HistoryBlock& block, bool& valid) {
  HistoryRun run;
  while (!reader.atEnd()) {
    const std::uint64_t step = reader.number();
    const std::uint64_t style = reader.number();
    // The lowest bit says whether a link follows.
    run.link = (style & 1) != 0 ? static_cast<std::uint32_t>(reader.number()) : 0;
    run.style = static_cast<std::uint16_t>(style >> 1);
    const bool inOrder = block.runs.empty() ? step == 0 : step > 0;
    const std::uint64_t begin = run.begin + step;
    valid = valid && inOrder && begin < block.text.size() && style >> 1 <= UINT16_MAX;
    if (!valid) return;
    run.begin = static_cast<std::uint32_t>(begin);
    block.runs.push_back(run);
  }
  valid = valid && !reader.failed();
}

void readSoftWraps(Reader reader, HistoryBlock& block, bool& valid) {
  std::uint64_t offset = 0;
  while (!reader.atEnd() && valid) {
    offset += reader.number();
    valid = offset <= block.text.size();
    block.softWraps.push_back(static_cast<std::uint32_t>(offset));
  }
  valid = valid && !reader.failed();
}

void readMarks(Reader reader, HistoryBlock& block, bool& valid) {
  std::uint64_t offset = 0;
  while (!reader.atEnd() && valid) {
    offset += reader.number();
    const std::uint64_t kind = reader.number();
    const std::uint64_t status = reader.number();
    valid = offset <= block.text.size() && kind <= static_cast<std::uint64_t>(HistoryMarkKind::CommandEnd);
    block.marks.push_back({.offset = static_cast<std::uint32_t>(offset),
                           .kind = static_cast<HistoryMarkKind>(kind),
                           .exitStatus = unzigzag(static_cast<std::uint32_t>(status))});
  }
  valid = valid && !reader.failed();
}

void readPackedStyles(Reader reader, HistoryBlock& block, bool& valid) {
  while (!reader.atEnd()) {
    PackedStyle style;
    for (std::uint32_t* part : {&style.foreground, &style.background, &style.underlineColor, &style.rendition}) {
      *part = static_cast<std::uint32_t>(reader.number());
    }
    block.packedStyles.push_back(style);
  }
  valid = valid && !reader.failed();
}

void readLinks(Reader reader, HistoryBlock& block, bool& valid) {
  while (!reader.atEnd()) {
    block.links.emplace_back(reader.bytes(reader.number()));
  }
  valid = valid && !reader.failed();
}

// Whether every run and every listed style names one that is there.
bool stylesAreThere(const HistoryBlock& block) {
  const auto isMissing = [&](StyleCode code) {
    return code.isListed() && code.listIndex() >= block.listedStyles.size();
  };
  if (std::ranges::any_of(block.styles, isMissing)) return false;
  const std::size_t styles = std::max(block.styles.size(), block.packedStyles.size());
  return std::ranges::all_of(block.runs, [&](const HistoryRun& run) { return run.style < styles; });
}

}  // namespace

void HistoryEncoder::addStyles(const std::vector<StyleCode>& styles, const std::vector<TextAttributes>& listed) {
  m_styles.reserve(styles.size() * sizeof(std::uint64_t));
  for (const StyleCode style : styles) {
    putEightBytes(m_styles, style.bits());
  }
  for (const TextAttributes& style : listed) {
    const int flags = (style.font.weight == FontWeight::Bold ? Bold : 0) |
                      (style.font.slant == FontSlant::Italic ? Italic : 0) |
                      (style.underline == Line::Single ? Underlined : 0) |
                      (style.strikethrough == Line::Single ? Struck : 0) | (style.background ? HasBackground : 0);
    putNumber(m_listedStyles, static_cast<std::uint64_t>(flags));
    putDouble(m_listedStyles, style.font.size);
    putColor(m_listedStyles, style.foreground);
    if (style.background) putColor(m_listedStyles, *style.background);
  }
}

void HistoryEncoder::addRun(const HistoryRun& run) {
  std::array<char, 3 * kMaxNumberBytes> bytes;
  char* end = writeNumber(bytes.data(), run.begin - m_lastRun.begin);
  end = writeNumber(end, (static_cast<std::uint64_t>(run.style) << 1) | (run.link != 0 ? 1U : 0U));
  if (run.link != 0) end = writeNumber(end, run.link);
  m_runs.append(std::string_view(bytes.data(), static_cast<std::size_t>(end - bytes.data())));
  m_lastRun = run;
}

void HistoryEncoder::addSoftWrap(std::uint32_t offset) {
  putNumber(m_softWraps, offset - m_lastWrap);
  m_lastWrap = offset;
}

void HistoryEncoder::addMark(const HistoryMark& mark) {
  putNumber(m_marks, mark.offset - m_lastMark);
  putNumber(m_marks, static_cast<std::uint64_t>(mark.kind));
  putNumber(m_marks, zigzag(mark.exitStatus));
  m_lastMark = mark.offset;
}

void HistoryEncoder::addPackedStyle(const PackedStyle& style) {
  for (const std::uint32_t part : {style.foreground, style.background, style.underlineColor, style.rendition}) {
    putNumber(m_packedStyles, part);
  }
}

void HistoryEncoder::addLink(std::string_view target) {
  putNumber(m_links, target.size());
  m_links += target;
}

std::string HistoryEncoder::finish(std::string_view text) {
  std::string out;
  out.reserve(text.size() + m_styles.size() + m_listedStyles.size() + m_runs.size() + m_softWraps.size() +
              m_marks.size() + 64);
  putSection(out, Section::Text, text);
  putSection(out, Section::Styles, m_styles);
  putSection(out, Section::Runs, m_runs);
  putSection(out, Section::SoftWraps, m_softWraps);
  putSection(out, Section::Marks, m_marks);
  putSection(out, Section::PackedStyles, m_packedStyles);
  putSection(out, Section::Links, m_links);
  putSection(out, Section::ListedStyles, m_listedStyles);
  if (m_clusters) putSection(out, Section::Clusters, "+");
  return out;
}

std::string encodeHistoryBlock(const HistoryBlock& block) {
  HistoryEncoder encoder;
  encoder.addStyles(block.styles, block.listedStyles);
  for (const HistoryRun& run : block.runs) {
    encoder.addRun(run);
  }
  for (const std::uint32_t offset : block.softWraps) {
    encoder.addSoftWrap(offset);
  }
  for (const HistoryMark& mark : block.marks) {
    encoder.addMark(mark);
  }
  for (const PackedStyle& style : block.packedStyles) {
    encoder.addPackedStyle(style);
  }
  for (const std::string& target : block.links) {
    encoder.addLink(target);
  }
  if (block.clusters) encoder.setClusters();
  return encoder.finish(block.text);
}

std::optional<HistoryBlock> decodeHistoryBlock(std::string_view bytes) {
  HistoryBlock block;
  bool valid = true;
  Reader reader(bytes);
  std::uint64_t before = 0;
  while (valid && !reader.atEnd()) {
    const std::uint64_t tag = reader.number();
    // Each at most once and in order, so that offsets are checked against the final text.
    valid = tag > before;
    before = tag;
    const std::string_view content = reader.bytes(reader.number());
    switch (static_cast<Section>(tag <= UINT8_MAX ? tag : 0)) {
      case Section::Text:
        block.text = content;
        break;
      case Section::Styles:
        readStyles(Reader(content), block, valid);
        break;
      case Section::Runs:
        readRuns(Reader(content), block, valid);
        break;
      case Section::SoftWraps:
        readSoftWraps(Reader(content), block, valid);
        break;
      case Section::Marks:
        readMarks(Reader(content), block, valid);
        break;
      case Section::PackedStyles:
        readPackedStyles(Reader(content), block, valid);
        break;
      case Section::Links:
        readLinks(Reader(content), block, valid);
        break;
      case Section::ListedStyles:
        readListedStyles(Reader(content), block, valid);
        break;
      case Section::Clusters:
        block.clusters = true;
        break;
      default:
        break;
    }
  }
  if (!valid || reader.failed() || !stylesAreThere(block) || (block.runs.empty() && !block.text.empty()))
    return std::nullopt;
  return block;
}

std::optional<std::string_view> textOfHistoryBlock(std::string_view bytes) {
  if (bytes.empty()) return std::string_view();
  Reader reader(bytes);
  const std::uint64_t tag = reader.number();
  const std::string_view content = reader.bytes(reader.number());
  if (reader.failed()) return std::nullopt;
  return tag == static_cast<std::uint64_t>(Section::Text) ? content : std::string_view();
}

}  // namespace zolt
