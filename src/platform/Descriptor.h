#pragma once

#include <unistd.h>

#include <utility>

namespace zolt {

/// Owns one file descriptor and closes it; -1 stands for none. Move-only.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int descriptor) : m_descriptor(descriptor) {}
  ~Descriptor() { reset(); }
  Descriptor(Descriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    if (this != &other) {
      reset();
      m_descriptor = std::exchange(other.m_descriptor, -1);
    }
    return *this;
  }

  int get() const { return m_descriptor; }
  explicit operator bool() const { return m_descriptor >= 0; }

  void reset() {
    if (m_descriptor >= 0) ::close(std::exchange(m_descriptor, -1));
  }

 private:
  int m_descriptor = -1;
};

}  // namespace zolt
