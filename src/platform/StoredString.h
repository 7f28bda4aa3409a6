#pragma once

#include <QObject>
#include <string>

#include "platform/UserDefaults.h"

namespace zolt {

/// A text setting bound to its key: reads and writes the stored value directly. Main thread.
class StoredString : public QObject {
  Q_OBJECT

 public:
  /// `defaults` must outlive the binding. `absent` is the value while the key is absent.
  StoredString(UserDefaults& defaults, std::string key, std::string absent, QObject* parent = nullptr);

  std::string value() const { return m_defaults.stringForKey(m_key).value_or(m_absent); }
  void setValue(const std::string& value) { m_defaults.setString(m_key, value); }

 Q_SIGNALS:
  /// After the stored value was set, here or elsewhere.
  void changed();

 private:
  UserDefaults& m_defaults;
  std::string m_key;
  std::string m_absent;
};

}  // namespace zolt
