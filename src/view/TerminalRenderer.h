#pragma once

namespace zolt {

/// Holds a renderer's font size, in logical pixels. Declared for future renderers; nothing creates one yet.
class TerminalRenderer {
 public:
  explicit TerminalRenderer(double size) : fontSize(size) {}

  double fontSize;
};

}  // namespace zolt
