#pragma once

#include <QDBusVariant>
#include <QObject>
#include <optional>

namespace zolt {

/// The desktop's preferred colour scheme, as reported by its settings portal: the key "color-scheme" of
/// "org.freedesktop.appearance" (XDG Desktop Portal, Settings interface). Main thread.
///
/// The portal is queried asynchronously; without a portal nothing is ever emitted.
class ColorScheme : public QObject {
  Q_OBJECT

 public:
  enum class Preference { None, Dark, Light };

  explicit ColorScheme(QObject* parent = nullptr);

  /// The last answer; nothing before the first.
  std::optional<Preference> preference() const { return m_preference; }

 Q_SIGNALS:
  void changed(zolt::ColorScheme::Preference preference);

 private Q_SLOTS:
  void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

 private:
  void ask(const char* method);
  void follow();
  void take(const QVariant& value);

  std::optional<Preference> m_preference;
};

}  // namespace zolt
