#include "symbols/Symbol.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>
#include <memory>
#include <utility>

// A static library's resources are linked in only when somebody asks for them; the macro wants no namespace around it.
static void loadDrawings() {
  Q_INIT_RESOURCE(symbols);
}

namespace zolt {

namespace {

const QString kFolder = QStringLiteral(":/symbols/");
const QString kSuffix = QStringLiteral(".svg");

QColor colorFor(QIcon::Mode mode, const QColor& own) {
  const QPalette palette = QGuiApplication::palette();
  if (mode == QIcon::Selected) return palette.color(QPalette::Active, QPalette::HighlightedText);
  const QColor base = own.isValid() ? own : palette.color(QPalette::Active, QPalette::WindowText);
  if (mode != QIcon::Disabled) return base;
  QColor faint = base;
  faint.setAlphaF(base.alphaF() * 0.4F);
  return faint;
}

class SymbolEngine : public QIconEngine {
 public:
  SymbolEngine(QString name, const QColor& color)
      : m_name(std::move(name)),
        m_color(color),
        m_drawing(std::make_shared<QSvgRenderer>(kFolder + m_name + kSuffix)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const qreal ratio = painter->device()->devicePixelRatioF();
    painter->drawImage(QRectF(rect), tinted((QSizeF(rect.size()) * ratio).toSize(), mode));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    return QPixmap::fromImage(tinted(size, mode));
  }

  QString key() const override { return QStringLiteral("zolt.symbol"); }
  QString iconName() override { return m_name; }
  bool isNull() override { return false; }
  QIconEngine* clone() const override { return new SymbolEngine(*this); }

 private:
  // The drawing scaled to fit and centred; only its alpha is used, not its colour.
  QImage tinted(const QSize& pixels, QIcon::Mode mode) const {
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QSizeF fitted = QSizeF(m_drawing->defaultSize()).scaled(pixels, Qt::KeepAspectRatio);
    QRectF bounds(QPointF(), fitted);
    bounds.moveCenter(QRectF(image.rect()).center());
    QPainter painter(&image);
    m_drawing->render(&painter, bounds);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), colorFor(mode, m_color));
    return image;
  }

  QString m_name;
  QColor m_color;
  std::shared_ptr<QSvgRenderer> m_drawing;
};

}  // namespace

QIcon symbol(const QString& name, const QColor& color) {
  loadDrawings();
  if (!QFile::exists(kFolder + name + kSuffix)) return {};
  return QIcon(new SymbolEngine(name, color));
}

QStringList symbolNames() {
  loadDrawings();
  QStringList names = QDir(kFolder).entryList(QDir::Files);
  names.replaceInStrings(kSuffix, QString());
  names.sort();
  return names;
}

}  // namespace zolt
