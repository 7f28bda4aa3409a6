// Rows as pictures: the glyphs as Qt draws them, and whose colours end where.
#include "canvas/RowPainter.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QGlyphRun>
#include <QRawFont>
#include <algorithm>
#include <cstdlib>
#include <string>

#include "canvas/CanvasLiterals.h"

namespace zolt {
namespace {

constexpr Color kRed{1, 0, 0, 1};
constexpr Color kGreen{0, 1, 0, 1};
constexpr Color kBlue{0, 0, 1, 1};

StyledPiece piece(int column, std::string text, TextAttributes attributes) {
  return {.column = CanvasColumn(column), .text = std::move(text), .attributes = attributes};
}

RowContent row(std::vector<StyledPiece> pieces) {
  RowContent content;
  for (const StyledPiece& piece : pieces) {
    content.end = std::max(content.end, piece.column + static_cast<int>(piece.text.size()));
  }
  content.pieces = std::move(pieces);
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

  CanvasFonts fonts{14, GetParam()};
  const CellMetrics& cell = fonts.metrics();
  RowPainter rows{fonts};
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
      TextAttributes attributes;
      attributes.font.weight = weight;
      attributes.font.slant = slant;
      attributes.foreground = {0.8, 0.4, 0.2, 1};
      attributes.background = kBlue;
      const QImage ours = picture(row({piece(0, text, attributes)}));

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
  TextAttributes one;
  one.foreground = kRed;
  one.background = kGreen;
  TextAttributes other;
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
  TextAttributes dim;
  dim.foreground = {1, 1, 1, 0.5};
  dim.background = kBlue;
  dim.underline = Line::Single;
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
  TextAttributes red;
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
  TextAttributes attributes;
  attributes.font.slant = FontSlant::Italic;
  attributes.font.weight = FontWeight::Bold;
  const RowContent content = row({piece(0, "WfWfW", attributes)});
  const QImage before = picture(content);
  rows.paintMark(content, {.begin = 1_col, .end = 3_col}, qRgb(255, 255, 0), qRgb(0, 0, 0));
  const QImage after = drawn();
  EXPECT_EQ(after.pixel(cells(2, 1).bottomRight()), qRgb(255, 255, 0));
  EXPECT_TRUE(hasGlyph(after, cells(2, 1), qRgb(0, 0, 0)));
  EXPECT_EQ(after.copy(cells(0, 1)), before.copy(cells(0, 1)));
  EXPECT_EQ(after.copy(cells(3, 2)), before.copy(cells(3, 2)));
}

TEST_P(RowPainterTest, ShowsNothingOfTheRowBefore) {
  TextAttributes red;
  red.background = kRed;
  picture(row({piece(0, "a long row of text", red)}));
  const QImage image = picture(row({piece(0, "ab", red)}));
  EXPECT_EQ(image, picture(row({piece(0, "ab", red)})));
  EXPECT_EQ(pixelsOf(image, cells(2, 20), qRgb(0, 0, 0)), cells(2, 20).width() * cells(2, 20).height());
  EXPECT_EQ(pixelsOf(picture(row({})), image.rect(), qRgb(0, 0, 0)), image.width() * image.height());
}

INSTANTIATE_TEST_SUITE_P(Scales, RowPainterTest, testing::Values(1.0, 1.5, 2.0));

}  // namespace
}  // namespace zolt
