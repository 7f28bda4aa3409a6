// Rows as pictures: the glyphs as Qt draws them, and whose colours end where.
#include "canvas/RowPainter.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QGlyphRun>
#include <QRawFont>
#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "canvas/CanvasLiterals.h"

namespace zolt {
namespace {

constexpr QRgb kRed = qRgb(255, 0, 0);
constexpr QRgb kGreen = qRgb(0, 255, 0);
constexpr QRgb kBlue = qRgb(0, 0, 255);

struct Piece {
  int column;
  std::string text;
  CellLook look;
};

Piece piece(int column, std::string text, const CellLook& look) {
  return {.column = column, .text = std::move(text), .look = look};
}

RowContent row(const std::vector<Piece>& pieces) {
  RowContent content;
  for (const Piece& piece : pieces) {
    content.addText(CanvasColumn(piece.column), piece.text, piece.look);
    content.end = std::max(content.end, content.pieces.back().range().end);
  }
  return content;
}

class RowPainterTest : public testing::TestWithParam<double> {
 protected:
  // What the painter draws, with the row's top left corner one cell from that of the picture.
  QImage drawn() const {
    QImage picture((cell.width * 30).toInt(), cell.height.toInt(), QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    rows.draw(painter, {.x = cell.width, .y = {}});
    return picture;
  }
  QImage picture(const RowContent& content, ColumnRange selected = {}) {
    rows.paint(content, selected);
    return drawn();
  }
  QRect cells(int column, int count) const {
    return {(cell.width * (column + 1)).toInt(), 0, (cell.width * count).toInt(), cell.height.toInt()};
  }

  CanvasFonts fonts{CanvasFont(), GetParam()};
  const CellMetrics& cell = fonts.metrics();
  RowPainter rows{fonts, CanvasColors()};
};

// The largest difference of any component of any pixel.
int distance(const QImage& a, const QImage& b) {
  int largest = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      const QRgb one = a.pixel(x, y);
      const QRgb other = b.pixel(x, y);
      largest = std::max({largest, std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                          std::abs(qBlue(one) - qBlue(other))});
    }
  }
  return largest;
}

int pixelsOf(const QImage& image, QRect area, QRgb color) {
  int count = 0;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) {
      if ((image.pixel(x, y) & RGB_MASK) == (color & RGB_MASK)) ++count;
    }
  }
  return count;
}

// Whether a glyph stands there in about this colour: thin strokes cover no pixel wholly.
bool hasGlyph(const QImage& image, QRect area, QRgb color) {
  const QImage part = image.copy(area);
  QImage plain(1, 1, QImage::Format_RGB32);
  plain.fill(color);
  for (int y = 0; y < part.height(); ++y) {
    for (int x = 0; x < part.width(); ++x) {
      if (distance(part.copy(x, y, 1, 1), plain) < 128) return true;
    }
  }
  return false;
}

TEST_P(RowPainterTest, DrawsGlyphsWithEdgesAsQtDoes) {
  const std::string text = "fjW@gy_|~#(Q{%&";
  for (const FontWeight weight : {FontWeight::Regular, FontWeight::Bold}) {
    for (const FontSlant slant : {FontSlant::Upright, FontSlant::Italic}) {
      CellLook look;
      look.weight = weight;
      look.slant = slant;
      look.foreground = qRgb(204, 102, 51);
      look.background = kBlue;
      const QImage ours = picture(row({piece(0, text, look)}));

      QFont font = CanvasFonts::systemFont(14 * GetParam());
      font.setBold(weight == FontWeight::Bold);
      font.setItalic(slant == FontSlant::Italic);
      const QRawFont raw = QRawFont::fromFont(font);
      QGlyphRun run;
      run.setRawFont(raw);
      run.setGlyphIndexes(raw.glyphIndexesForString(QString::fromStdString(text)));
      QList<QPointF> positions;
      for (int column = 0; column < static_cast<int>(text.size()); ++column) {
        positions.append(QPointF((cell.width * (column + 1)).toInt(), cell.baseline.toInt()));
      }
      run.setPositions(positions);
      QImage qts(ours.size(), QImage::Format_RGB32);
      qts.fill(Qt::black);
      QPainter painter(&qts);
      painter.fillRect(cells(0, static_cast<int>(text.size())), Qt::blue);
      painter.setPen(QColor(204, 102, 51));
      painter.drawGlyphRun({}, run);
      painter.end();
      EXPECT_LE(distance(ours, qts), 2) << (weight == FontWeight::Bold) << (slant == FontSlant::Italic);
      EXPECT_TRUE(hasGlyph(ours, ours.rect(), qRgb(204, 102, 51)));
    }
  }
}

TEST_P(RowPainterTest, GivesEachCellItsOwnColours) {
  CellLook one;
  one.foreground = kRed;
  one.background = kGreen;
  CellLook other;
  other.foreground = kGreen;
  other.background = kBlue;
  const QImage image = picture(row({piece(0, "|", one), piece(1, "|", other)}));
  EXPECT_TRUE(hasGlyph(image, cells(0, 1), qRgb(255, 0, 0)));
  EXPECT_FALSE(hasGlyph(image, cells(0, 1), qRgb(0, 0, 255)));
  EXPECT_EQ(image.pixel(cells(0, 1).topLeft()), qRgb(0, 255, 0));
  EXPECT_TRUE(hasGlyph(image, cells(1, 1), qRgb(0, 255, 0)));
  EXPECT_FALSE(hasGlyph(image, cells(1, 1), qRgb(255, 0, 0)));
  EXPECT_EQ(image.pixel(cells(1, 1).topLeft()), qRgb(0, 0, 255));
  EXPECT_EQ(pixelsOf(image, cells(2, 1), qRgb(0, 0, 0)), cells(2, 1).width() * cells(2, 1).height());
}

TEST_P(RowPainterTest, MixesHalfTransparentTextAndLinesWithWhatIsBehind) {
  CellLook dim;
  dim.foreground = qRgba(255, 255, 255, 128);
  dim.background = kBlue;
  dim.underline = LineStyle::Single;
  const QImage image = picture(row({piece(0, "W", dim)}));
  const QRgb half = qRgb(128, 128, 255);
  EXPECT_EQ(image.pixel(cells(0, 1).left(), cell.underlineTop.toInt()), half);
  EXPECT_TRUE(
      hasGlyph(image, QRect(cells(0, 1).topLeft(), QSize(cell.width.toInt(), cell.underlineTop.toInt())), half));
  EXPECT_EQ(image.pixel(cells(0, 1).topLeft()), qRgb(0, 0, 255));
  for (int x = 0; x < cell.width.toInt(); ++x) {
    for (int y = 0; y < cell.height.toInt(); ++y) {
      const QRgb pixel = image.pixel(cells(0, 1).topLeft() + QPoint(x, y));
      ASSERT_LE(qRed(pixel), 129) << x << ", " << y;
    }
  }
}

TEST_P(RowPainterTest, PaintsTheSelectionUnderTheTextAndBeyondItsEnd) {
  CellLook red;
  red.background = kRed;
  const QImage image = picture(row({piece(0, "WW", red)}), {.begin = 1_col, .end = 4_col});
  EXPECT_EQ(image.pixel(cells(0, 1).topLeft()), qRgb(255, 0, 0));
  const QRgb selection = image.pixel(cells(3, 1).center());
  EXPECT_EQ(selection, qRgb(0x26, 0x4F, 0x78));
  EXPECT_EQ(image.pixel(cells(1, 1).topLeft()), selection);
  EXPECT_TRUE(hasGlyph(image, cells(1, 1), qRgb(255, 255, 255)));
  EXPECT_EQ(image.pixel(cells(4, 1).center()), qRgb(0, 0, 0));
}

TEST_P(RowPainterTest, MarksColumnsInTwoColoursAndNoPixelBeside) {
  CellLook look;
  look.slant = FontSlant::Italic;
  look.weight = FontWeight::Bold;
  const RowContent content = row({piece(0, "WfWfW", look)});
  const QImage before = picture(content);
  rows.paintMark(content, {.begin = 1_col, .end = 3_col}, qRgb(255, 255, 0), qRgb(0, 0, 0));
  const QImage after = drawn();
  EXPECT_EQ(after.pixel(cells(2, 1).bottomRight()), qRgb(255, 255, 0));
  EXPECT_TRUE(hasGlyph(after, cells(2, 1), qRgb(0, 0, 0)));
  EXPECT_EQ(after.copy(cells(0, 1)), before.copy(cells(0, 1)));
  EXPECT_EQ(after.copy(cells(3, 2)), before.copy(cells(3, 2)));
}

TEST_P(RowPainterTest, ShowsNothingOfTheRowBefore) {
  CellLook red;
  red.background = kRed;
  picture(row({piece(0, "a long row of text", red)}));
  const QImage image = picture(row({piece(0, "ab", red)}));
  EXPECT_EQ(image, picture(row({piece(0, "ab", red)})));
  EXPECT_EQ(pixelsOf(image, cells(2, 20), qRgb(0, 0, 0)), cells(2, 20).width() * cells(2, 20).height());
  EXPECT_EQ(pixelsOf(picture(row({})), image.rect(), qRgb(0, 0, 0)), image.width() * image.height());
}

CellLook underlined(LineStyle style) {
  return {.foreground = kRed, .underlineColor = kGreen, .underline = style};
}

// The rows of the picture in which a pixel of the area has this colour.
int linesWith(const QImage& image, QRect area, QRgb color) {
  int lines = 0;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    lines += pixelsOf(image, QRect(area.left(), y, area.width(), 1), color) > 0 ? 1 : 0;
  }
  return lines;
}

TEST_P(RowPainterTest, UnderlinesInFiveStylesAndAColourOfTheirOwn) {
  const int thick = cell.lineThickness.toInt();
  std::vector<QImage> images;
  for (const LineStyle style :
       {LineStyle::Single, LineStyle::Double, LineStyle::Curly, LineStyle::Dotted, LineStyle::Dashed}) {
    images.push_back(picture(row({piece(0, "   ", underlined(style))})));
    const QImage& image = images.back();
    EXPECT_TRUE(hasGlyph(image, cells(1, 1), kGreen)) << static_cast<int>(style);
    EXPECT_FALSE(hasGlyph(image, cells(1, 1), kRed)) << static_cast<int>(style);
    EXPECT_EQ(image.copy(cells(1, 1)), image.copy(cells(2, 1))) << "the pattern of each cell is the same";
    for (std::size_t other = 0; other + 1 < images.size(); ++other) {
      EXPECT_NE(image, images[other]) << static_cast<int>(style) << " looks like " << other;
    }
  }
  EXPECT_EQ(linesWith(images[0], cells(0, 3), kGreen), thick);
  EXPECT_EQ(linesWith(images[1], cells(0, 3), kGreen), 2 * thick);
}

TEST_P(RowPainterTest, DrawsLinesAboveAndThroughText) {
  const QImage over = picture(row({piece(0, " ", {.foreground = kRed, .overlined = true})}));
  EXPECT_EQ(over.pixel(cells(0, 1).topLeft()), kRed);
  const QImage through = picture(row({piece(0, " ", {.foreground = kRed, .struck = true})}));
  EXPECT_EQ(through.pixel(cells(0, 1).left(), cell.strikethroughTop.toInt()), kRed);
}

TEST_P(RowPainterTest, HidesBlinkingTextAndLeavesTheRest) {
  const RowContent content = row({piece(0, "W", {.foreground = kRed, .background = kBlue, .blinks = true}),
                                  piece(1, "W", {.foreground = kGreen})});
  rows.paint(content, {}, RowPainter::Blinking::Hidden);
  const QImage image = drawn();
  EXPECT_EQ(pixelsOf(image, cells(0, 1), kBlue), cells(0, 1).width() * cells(0, 1).height());
  EXPECT_TRUE(hasGlyph(image, cells(1, 1), kGreen));
}

TEST_P(RowPainterTest, ShowsTheCursorInFourLooks) {
  const RowContent content = row({piece(0, "WW", {.foreground = kRed})});
  const auto with = [&](CursorLook look) {
    rows.paint(content, {});
    rows.paintCursor(content,
                     {.columns = {.begin = 1_col, .end = 2_col}, .look = look, .color = kGreen, .text = kBlue});
    return drawn();
  };
  const QImage block = with(CursorLook::Block);
  EXPECT_TRUE(hasGlyph(block, cells(1, 1), kBlue));
  EXPECT_FALSE(hasGlyph(block, cells(1, 1), kRed));
  EXPECT_EQ(block.pixel(cells(1, 1).topLeft()), kGreen);
  const QImage hollow = with(CursorLook::HollowBlock);
  EXPECT_TRUE(hasGlyph(hollow, cells(1, 1), kRed)) << "the character stays as it was";
  for (const QPoint corner :
       {cells(1, 1).topLeft(), cells(1, 1).topRight(), cells(1, 1).bottomLeft(), cells(1, 1).bottomRight()}) {
    EXPECT_EQ(hollow.pixel(corner), kGreen);
  }
  const QImage bar = with(CursorLook::Bar);
  EXPECT_EQ(bar.pixel(cells(1, 1).topLeft()), kGreen);
  EXPECT_NE(bar.pixel(cells(1, 1).topRight()), kGreen);
  const QImage line = with(CursorLook::Underline);
  EXPECT_EQ(line.pixel(cells(1, 1).bottomRight()), kGreen);
  EXPECT_NE(line.pixel(cells(1, 1).topLeft()), kGreen);
  for (const QImage& image : {block, hollow, bar, line}) {
    EXPECT_TRUE(hasGlyph(image, cells(0, 1), kRed)) << "the character before it";
    EXPECT_EQ(pixelsOf(image, cells(2, 3), kGreen), 0);
  }
}

// Whichever font has the character, and even if none has.
TEST_P(RowPainterTest, KeepsClustersWithinTheirCells) {
  for (const char* cluster : {"\u6F22", "e\u0301", "\U0001F600", "\u0E01\u0E33", "\u2A0C"}) {
    for (const int columns : {1, 2}) {
      RowContent content;
      content.addCluster({.begin = 2_col, .end = CanvasColumn(2 + columns)}, cluster, {.foreground = kRed});
      content.end = 8_col;
      const QImage image = picture(content);
      const auto blank = [&](QRect area) {
        return pixelsOf(image, area, qRgb(0, 0, 0)) == area.width() * area.height();
      };
      EXPECT_FALSE(blank(cells(2, columns))) << cluster;
      // A wide one may reach over their edges by a tenth.
      const int reach = cell.width.toInt() / 4 + 1;
      EXPECT_TRUE(blank(cells(0, 2).adjusted(0, 0, -reach, 0))) << cluster;
      EXPECT_TRUE(blank(cells(2 + columns, 4).adjusted(reach, 0, 0, 0))) << cluster;
    }
  }
}

TEST_P(RowPainterTest, LetsTheDesktopShowThroughATranslucentBackground) {
  RowPainter translucent(fonts, {.background = qRgba(0, 0, 0, 128)});
  translucent.paint(
      row({piece(0, "W", {.foreground = kRed}), piece(1, "W", {.foreground = kRed, .background = kBlue})}), {});
  QImage image((cell.width * 30).toInt(), cell.height.toInt(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  translucent.draw(painter, {.x = cell.width, .y = {}});
  painter.end();
  EXPECT_EQ(qAlpha(image.pixel(cells(0, 1).topLeft())), 128);
  EXPECT_EQ(image.pixel(cells(1, 1).topLeft()), kBlue) << "a background of its own is opaque";
  const auto alphas = [&](QRect area) {
    int most = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
      for (int x = area.left(); x <= area.right(); ++x) {
        most = std::max(most, qAlpha(image.pixel(x, y)));
      }
    }
    return most;
  };
  EXPECT_GT(alphas(cells(0, 1)), 200) << "the glyph is opaque";
}

INSTANTIATE_TEST_SUITE_P(Scales, RowPainterTest, testing::Values(1.0, 1.5, 2.0));

}  // namespace
}  // namespace zolt
