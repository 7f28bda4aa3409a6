// glyphwindow [cell]: the least a Qt program can do for a key press: a window that shows the glyph of the last key
// pressed and redraws all of itself; with `cell`, only the glyph's cell.
#include <QApplication>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QWidget>

namespace {

constexpr int kInset = 5;
constexpr int kFontSize = 14;

QFont fixedFont() {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPixelSize(kFontSize);
  return font;
}

class GlyphWindow : public QWidget {
 public:
  explicit GlyphWindow(bool onlyTheCell) : m_onlyTheCell(onlyTheCell) {
    setFont(fixedFont());
    setAttribute(Qt::WA_OpaquePaintEvent);
    const QFontMetrics metrics(font());
    m_cell = QRect(kInset, kInset, metrics.horizontalAdvance(QLatin1Char('M')), metrics.height());
    m_baseline = kInset + metrics.ascent();
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    m_glyph = event->text();
    if (m_onlyTheCell) {
      update(m_cell);
    } else {
      update();
    }
  }

  void paintEvent(QPaintEvent* event) override {
    QPainter painter(this);
    painter.fillRect(event->rect(), Qt::black);
    painter.setPen(Qt::white);
    painter.drawText(QPoint(kInset, m_baseline), m_glyph);
  }

 private:
  const bool m_onlyTheCell;
  QRect m_cell;
  int m_baseline = 0;
  QString m_glyph;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  GlyphWindow window(argc > 1 && qstrcmp(argv[1], "cell") == 0);
  window.resize(900, 600);
  window.show();
  return QApplication::exec();
}
