#pragma once

#include <QDBusVariant>
#include <QObject>
#include <optional>

namespace zolt {

/// The colour scheme that the user prefers on this desktop, as its settings portal tells it: the key "color-scheme" of
/// "org.freedesktop.appearance" (XDG Desktop Portal, Settings interface). Main thread.
///
/// The portal is asked without waiting for it; where there is none, nothing is ever announced.
class ColorScheme : public QObject {
  Q_OBJECT

 public:
  enum class Preference { None, Dark, Light };

  explicit ColorScheme(QObject* parent = nullptr);

  /// What was last heard; nothing so far.
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
