#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "text/GraphemeClusters.h"
#include "text/Utf8Decoder.h"
#include "vt/functions/Modes.h"
#include "vt/input/Keyboard.h"
#include "vt/input/Mouse.h"
#include "vt/parser/Parser.h"
#include "vt/screen/Screen.h"
#include "vt/state/TerminalState.h"

namespace zolt::vt {

template <class Type, class Plain>
concept Like = std::same_as<std::remove_const_t<Type>, Plain>;

/// What is saved of a terminal: one description, which a SavedWriter writes and a SavedReader reads.
///
/// Each function names all members of its class in a structured binding, whether it saves them or not. A member that is
/// added does not compile until it stands here, too.
///
/// Numbers of the engine are not saved: neither IDs of styles, links and clusters nor slots of rows. What is not saved
/// is either the user's, or found anew: caches, and what was left behind by a sequence that has ended.
struct SavedFields {
  template <class Archive>
  static constexpr bool kReads = std::remove_reference_t<Archive>::isReader;

  static bool isPrintable(char32_t scalar) { return (scalar >= ' ' && scalar < 0x7F) || scalar >= 0xA0; }
  static bool isUtf8(std::string_view text) { return isValidUtf8(text); }
  static bool isClean(std::string_view text) {
    return isValidUtf8(text) && withoutControls(text, text.size()).size() == text.size();
  }
  static bool isPath(std::string_view text) { return text.empty() || isWorkingDirectory(text); }

  // Cells and what they refer to.

  static void fields(auto& archive, Like<CellColor> auto& color) {
    constexpr std::uint32_t kMax = CellColor::direct(0xFF, 0xFF, 0xFF).bits();
    std::uint32_t bits = color.bits();
    archive.number(bits, 0, kMax);
    const CellColor read = CellColor::fromBits(bits);
    archive.require(read.kind() == CellColor::Kind::Direct || read == CellColor() ||
                    read == CellColor::indexed(read.index()));
    if constexpr (kReads<decltype(archive)>) color = archive.error() ? CellColor() : read;
  }

  static void fields(auto& archive, Like<Style> auto& style) {
    auto& [foreground, background, underlineColor, flags, underline] = style;
    fields(archive, foreground);
    fields(archive, background);
    fields(archive, underlineColor);
    archive.number(flags, 0, 2 * kOverlined - 1);
    archive.choice(underline, Underline::Dashed);
  }

  static void fields(auto& archive, Like<LinkTarget> auto& target) {
    auto& [id, uri] = target;
    archive.text(id, LinkTarget::maxIdBytes, isClean);
    archive.text(uri, LinkTarget::maxUriBytes, LinkTarget::isUri);
  }

  static void fields(auto& archive, Like<RowMark> auto& mark) {
    auto& [column, kind, exitStatus] = mark;
    archive.number(column, 0, INT32_MAX);
    archive.choice(kind, HistoryMarkKind::CommandEnd);
    archive.number(exitStatus, 0, INT32_MAX);
  }

  // The screen.

  static void fields(auto& archive, Like<Cursor> auto& cursor) {
    auto& [row, column, wrapsNext] = cursor;
    archive.number(row, 0, archive.size().rows - 1);
    archive.number(column, 0, archive.size().columns - 1);
    archive.flags(wrapsNext);
  }

  static void fields(auto& archive, Like<Pen> auto& pen) {
    auto& [style, link, isProtected] = pen;
    fields(archive, style);
    archive.link(link);
    archive.flags(isProtected);
  }

  static void fields(auto& archive, Like<CharacterSets> auto& characterSets) {
    auto& [sets, inUse, once] = characterSets;
    for (auto& each : sets) {
      archive.choice(each, CharacterSet::Swiss);
    }
    constexpr int kLast = static_cast<int>(std::tuple_size_v<decltype(CharacterSets::sets)>) - 1;
    archive.number(inUse, 0, kLast);
    archive.optional(once, [&](auto& set) { archive.number(set, 0, kLast); });
  }

  static void fields(auto& archive, Like<ScreenModes> auto& modes) {
    auto& [autoWrap, origin, insert, newLine, leftRightMargins, reverseWrap, extendedReverseWrap, graphemeClusters] =
        modes;
    archive.flags(autoWrap, origin, insert, newLine, leftRightMargins, reverseWrap, extendedReverseWrap,
                  graphemeClusters);
  }

  static void fields(auto& archive, Like<Rectangle> auto& margins) {
    auto& [rows, columns] = margins;
    auto& [top, bottom] = rows;
    auto& [left, right] = columns;
    archive.number(top, 0, archive.size().rows - 1);
    archive.number(bottom, top + 1, archive.size().rows);
    archive.number(left, 0, archive.size().columns - 1);
    archive.number(right, left + 1, archive.size().columns);
  }

  static void fields(auto& archive, Like<Grid> auto& grid) {
    // Which slot a row has cannot be seen.
    auto& [rows, columns, cells, states, order, ringTop, ringSize, ringOffset, marks] = grid;
    for (int row = 0; row < rows; ++row) {
      gridRow(archive, grid, row);
    }
  }

  // Eight to a byte.
  static void fields(auto& archive, Like<std::vector<bool>> auto& bits) {
    for (std::size_t at = 0; at < bits.size(); at += 8) {
      const std::size_t count = std::min<std::size_t>(8, bits.size() - at);
      std::uint8_t byte = 0;
      for (std::size_t i = 0; i < count; ++i) {
        byte = static_cast<std::uint8_t>(byte | (bits[at + i] ? 1 << i : 0));
      }
      archive.byte(byte);
      if constexpr (kReads<decltype(archive)>) {
        for (std::size_t i = 0; i < count; ++i) {
          bits[at + i] = (byte >> i & 1) != 0;
        }
      }
    }
  }

  static void fields(auto& archive, Like<Scrollback> auto& scrollback) {
    // The lines themselves are saved elsewhere, and with them the column.
    BlockStart next = scrollback.next();
    auto& [position, line, column, continuesALine] = next;
    constexpr std::int64_t kMax = std::int64_t{1} << 60;
    archive.number(position.value, 0, kMax);
    archive.number(line, 0, kMax);
    archive.flags(continuesALine);
    if constexpr (kReads<decltype(archive)>) scrollback.startAt(next);
  }

  static void fields(auto& archive, Like<Screen> auto& screen) {
    auto& [modes, characterSets, protection, tables, scrollback, grids, shownGrid, cursor, saved, margins, tabStops,
           rowsBelow, detachedLines, pen, attributesKnown, blankKnown, attributes, blank, refused, lastPrinted,
           openCluster, lastIsPlain] = screen;
    if constexpr (kReads<decltype(archive)>) archive.setTables(tables);
    bool showsAlternate = screen.showsAlternate();
    archive.flags(showsAlternate, openCluster, lastIsPlain);
    if constexpr (kReads<decltype(archive)>) shownGrid = &grids[showsAlternate ? 1 : 0];
    fields(archive, tabStops);
    for (auto& grid : grids) {
      fields(archive, grid);
    }
    linesBelow(archive, rowsBelow);
    fields(archive, modes);
    fields(archive, characterSets);
    archive.choice(protection, Protection::Dec);
    fields(archive, cursor);
    for (auto& each : saved) {
      savedCursor(archive, each);
    }
    fields(archive, margins);
    fields(archive, pen);
    archive.number(lastPrinted, 0, 0x10FFFF);
    archive.require(lastPrinted == 0 || (isPrintable(lastPrinted) && (lastPrinted < 0xD800 || lastPrinted > 0xDFFF)));
    fields(archive, scrollback);
  }

  // The modes and what else there is of a terminal.

  static void fields(auto& archive, Like<TerminalSize> auto& size) {
    auto& [rows, columns, pixelWidth, pixelHeight] = size;
    archive.number(rows, 1, Screen::maxSide);
    archive.number(columns, 1, Screen::maxSide);
    archive.number(pixelWidth, 0, TerminalState::maxPixels);
    archive.number(pixelHeight, 0, TerminalState::maxPixels);
  }

  static void fields(auto& archive, Like<MouseModes> auto& modes) {
    auto& [tracking, encoding] = modes;
    archive.choice(tracking, MouseTracking::AnyEvent);
    archive.choice(encoding, MouseEncoding::SgrPixels);
  }

  static void fields(auto& archive, Like<TerminalModes> auto& modes) {
    auto& [keyboardLocked, applicationCursor, applicationKeypad, smoothScroll, reverseScreen, autoRepeat, cursorBlinks,
           cursorVisible, allowColumnChange, columns132, keepsScreenOnColumnChange, backarrowIsBackspace,
           numLockEndsKeypadMode, mouse, focusEvents, alternateScroll, metaSendsEscape, altSendsEscape, urgencyOnBell,
           raiseOnBell, bracketedPaste, synchronizedUpdate, colorSchemeReports, sizeReports] = modes;
    archive.flags(keyboardLocked, applicationCursor, applicationKeypad, smoothScroll, reverseScreen, autoRepeat,
                  cursorBlinks, cursorVisible, allowColumnChange, columns132, keepsScreenOnColumnChange,
                  backarrowIsBackspace, numLockEndsKeypadMode, focusEvents, alternateScroll, metaSendsEscape,
                  altSendsEscape, urgencyOnBell, raiseOnBell, bracketedPaste, synchronizedUpdate, colorSchemeReports,
                  sizeReports);
    fields(archive, mouse);
  }

  static void fields(auto& archive, Like<KeyboardOptions::Flags> auto& flags) {
    auto& [current, pushed] = flags;
    archive.number(current, 0, keyFlags::all);
    archive.list(pushed, KeyboardOptions::maxPushed, [&](auto& each) { archive.number(each, 0, keyFlags::all); });
  }

  static void fields(auto& archive, Like<KeyboardOptions> auto& keyboard) {
    auto& [modifyKeyboard, modifyCursorKeys, modifyFunctionKeys, modifyOtherKeys, formatOtherKeys, flags] = keyboard;
    archive.number(modifyKeyboard, 0, 15);
    archive.number(modifyCursorKeys, -1, 3);
    archive.number(modifyFunctionKeys, -1, 3);
    archive.number(modifyOtherKeys, 0, 2);
    archive.number(formatOtherKeys, 0, 1);
    for (auto& each : flags) {
      fields(archive, each);
    }
  }

  static void fields(auto& archive, Like<Rgb> auto& color) {
    auto& [red, green, blue] = color;
    archive.byte(red);
    archive.byte(green);
    archive.byte(blue);
  }

  static void fields(auto& archive, Like<Palette> auto& palette) {
    static const Palette kInitial;
    auto& [indexedDefaults, roleDefaults, indexed, roles] = palette;
    // The theme's colours are kept, too: when another is applied later, it must be known which the program has changed.
    changes(archive, indexedDefaults, kInitial.m_indexedDefaults);
    changes(archive, roleDefaults, kInitial.m_roleDefaults);
    changes(archive, indexed, indexedDefaults);
    changes(archive, roles, roleDefaults);
  }

  static void fields(auto& archive, Like<CursorStyle> auto& style) {
    auto& [shape, blinks] = style;
    archive.choice(shape, CursorShape::Bar);
    archive.flags(blinks);
  }

  static void fields(auto& archive, Like<TerminalState::Titles> auto& titles) {
    auto& [title, iconTitle] = titles;
    archive.text(title, TerminalState::maxTitleBytes, isClean);
    archive.text(iconTitle, TerminalState::maxTitleBytes, isClean);
  }

  static void fields(auto& archive, Like<Progress> auto& progress) {
    auto& [kind, percent] = progress;
    archive.choice(kind, Progress::Kind::Paused);
    archive.number(percent, 0, 100);
  }

  static void fields(auto& archive, Like<TerminalState> auto& state) {
    // The size is known before; settings are the user's; events and replies are left to whoever takes them.
    auto& [settings, screen, modes, keyboard, palette, cursorStyle, conformanceLevel, rectanglesAreStreams, prefersDark,
           title, iconTitle, pushedTitles, workingDirectory, workingDirectoryHost, progress, pushedStyles,
           pushedPalettes, savedModes, size, now, updateBegan, commandBegan, events, replies, endedByBell] = state;
    fields(archive, screen);
    fields(archive, modes);
    fields(archive, keyboard);
    fields(archive, palette);
    archive.optional(cursorStyle, [&](auto& each) { fields(archive, each); });
    archive.number(conformanceLevel, 61, 64);
    archive.flags(rectanglesAreStreams, prefersDark, endedByBell);
    archive.text(title, TerminalState::maxTitleBytes, isClean);
    archive.text(iconTitle, TerminalState::maxTitleBytes, isClean);
    archive.list(pushedTitles, TerminalState::maxPushedTitles, [&](auto& each) { fields(archive, each); });
    archive.text(workingDirectory, TerminalState::maxPathBytes, isPath);
    archive.text(workingDirectoryHost, TerminalState::maxHostBytes, isClean);
    fields(archive, progress);
    archive.list(pushedStyles, TerminalState::maxPushed, [&](auto& each) { fields(archive, each); });
    archive.list(pushedPalettes, TerminalState::maxPushed, [&](auto& each) { fields(archive, each); });
    archive.list(savedModes, modeTable().size(), [&](auto& each) { savedMode(archive, each); });
    if (modes.synchronizedUpdate) elapsedTime(archive, updateBegan, now);
    // The clock is another one then.
    if constexpr (std::remove_cvref_t<decltype(archive)>::isReader) commandBegan.reset();
  }

  static void fields(auto& archive, Like<MouseReporter> auto& reporter) {
    auto& [held, modes, reportedAt] = reporter;
    archive.number(held, 0, (2 << static_cast<int>(MouseButton::Button11)) - 1);
    fields(archive, modes);
    archive.optional(reportedAt, [&](auto& at) {
      auto& [x, y] = at;
      archive.number(x, 0, INT32_MAX);
      archive.number(y, 0, INT32_MAX);
    });
  }

  // The parser.

  static void fields(auto& archive, Like<ControlSequence> auto& sequence) {
    auto& [prefix, final, intermediateCount, parameterCount, intermediates, parameters] = sequence;
    archive.number(prefix, 0, 0x7E);
    archive.number(final, 0, 0x7E);
    archive.number(intermediateCount, 0, ControlSequence::maxIntermediates);
    for (std::size_t i = 0; i < intermediateCount; ++i) {
      archive.number(intermediates[i], 0x20, 0x2F);
    }
    archive.number(parameterCount, 0, ControlSequence::maxParameters);
    for (std::size_t i = 0; i < parameterCount; ++i) {
      auto& [value, isSub] = parameters[i];
      archive.number(value, Parameter::omitted, INT32_MAX);
      archive.flags(isSub);
    }
  }

  static void fields(auto& archive, Like<Parser> auto& parser) {
    auto& [receiver, state, decoder, sequence, tooManyIntermediates, tooManyParameters, open, stringSuspended,
           stringTooLong, string] = parser;
    archive.choice(state, ParserState::IgnoredString);
    incompleteCharacter(archive, decoder);
    // Between sequences, the rest is what the last one has left behind.
    if (state == ParserState::Ground) return;
    fields(archive, sequence);
    archive.flags(tooManyIntermediates, tooManyParameters, stringSuspended, stringTooLong);
    archive.choice(open, Parser::OpenString::DeviceControl);
    archive.text(string, Parser::maxPayloadBytes, isUtf8);
    archive.require(string.size() <= parser.maxStringBytes());
  }

 private:
  static void gridRow(auto& archive, auto& grid, int row) {
    RowInfo info = std::as_const(grid).state(row);
    auto& [extent, wraps, hasMarks, isChanged] = info;
    archive.number(extent, 0, archive.size().columns);
    archive.flags(wraps, hasMarks);
    const auto written = grid.row(row).first(extent);
    archive.cells(written);
    const std::span<const RowMark> known = grid.marks(row);
    std::vector<RowMark> marks(known.begin(), known.end());
    if (hasMarks) archive.list(marks, Grid::maxMarks, [&](auto& each) { fields(archive, each); });
    if constexpr (kReads<decltype(archive)>) {
      hasMarks = false;
      grid.state(row) = info;
      for (const RowMark& mark : marks) {
        // An alternate screen that was wider may have left it past the last column.
        archive.require(mark.column <= Screen::maxSide);
        grid.addMark(row, mark);
      }
      archive.require(isWhole(grid.row(row)));
    }
  }

  // Wide characters have their two halves, and fillers stand in the last column.
  static bool isWhole(std::span<const Cell> cells) {
    bool afterWide = false;
    for (std::size_t column = 0; column < cells.size(); ++column) {
      const Cell::Width width = cells[column].width();
      if (afterWide != (width == Cell::Width::Tail)) return false;
      if (width == Cell::Width::Filler && column + 1 != cells.size()) return false;
      afterWide = width == Cell::Width::Wide;
    }
    return !afterWide;
  }

  // As many cells as two screens have: rows that were pushed past the bottom, and a line of the scrollback.
  static void linesBelow(auto& archive, auto& lines) {
    std::size_t room = std::size_t{2} * Screen::maxCells;
    archive.list(lines, Screen::maxCells, [&](auto& line) {
      auto& [cells, marks, continuesPrevious] = line;
      std::size_t count = cells.size();
      archive.number(count, 0, static_cast<std::int64_t>(room));
      room -= std::min(room, count);
      if constexpr (kReads<decltype(archive)>) cells.resize(count);
      archive.cells(std::span(cells));
      archive.require(std::ranges::all_of(
          cells, [](Cell cell) { return cell.width() == Cell::Width::Narrow || cell.width() == Cell::Width::Wide; }));
      const std::size_t maxMarks = std::size_t{Screen::maxSide} * Grid::maxMarks;
      archive.list(marks, maxMarks, [&](auto& each) { fields(archive, each); });
      archive.flags(continuesPrevious);
    });
  }

  static void savedCursor(auto& archive, auto& saved) {
    auto& [cursor, pen, characterSets, origin] = saved;
    fields(archive, cursor);
    fields(archive, pen);
    fields(archive, characterSets);
    archive.flags(origin);
  }

  static void savedMode(auto& archive, auto& saved) {
    auto& [number, value] = saved;
    archive.number(number, 0, INT16_MAX);
    archive.flags(value);
    const Mode* const mode = findMode(true, number);
    archive.require(mode != nullptr && mode->set != nullptr);
  }

  // The colours that differ from those in `base`, between the numbers of those that do not.
  static void changes(auto& archive, auto& colors, const auto& base) {
    for (std::size_t at = 0; at < colors.size(); ++at) {
      std::size_t same = 0;
      while (!kReads<decltype(archive)> && at + same < colors.size() && colors[at + same] == base[at + same]) {
        ++same;
      }
      archive.number(same, 0, static_cast<std::int64_t>(colors.size() - at));
      if constexpr (kReads<decltype(archive)>) std::copy_n(base.begin() + at, same, colors.begin() + at);
      at += same;
      if (at < colors.size()) fields(archive, colors[at]);
    }
  }

  // How long ago it began: the clock is another after a restart.
  static void elapsedTime(auto& archive, auto& began, const Milliseconds& now) {
    std::int64_t elapsed = std::clamp<std::int64_t>((now - began).count(), 0, INT32_MAX);
    archive.number(elapsed, 0, INT32_MAX);
    if constexpr (kReads<decltype(archive)>) began = now - Milliseconds(elapsed);
  }

  // The bytes of a character that the decoder has taken so far.
  static void incompleteCharacter(auto& archive, auto& decoder) {
    std::string bytes = bytesInside(decoder);
    archive.text(bytes, 3, [](std::string_view text) {
      Utf8Decoder probe;
      return std::ranges::all_of(text, [&](char byte) {
        return probe.take(static_cast<std::uint8_t>(byte)) == Utf8Decoder::Outcome::NeedsMore;
      });
    });
    if constexpr (kReads<decltype(archive)>) {
      decoder = {};
      for (const char byte : bytes) {
        decoder.take(static_cast<std::uint8_t>(byte));
      }
    }
  }

  // Completes a character in some way, and takes what was added off again.
  static std::string bytesInside(Utf8Decoder decoder) {
    std::string bytes;
    if (!decoder.isInside()) return bytes;
    std::size_t added = 0;
    for (; decoder.isInside(); ++added) {
      // One of these two can follow in any character.
      const Utf8Decoder before = decoder;
      if (decoder.take(0x80) != Utf8Decoder::Outcome::Refused) continue;
      decoder = before;
      decoder.take(0xBF);
    }
    appendUtf8(bytes, decoder.scalar());
    bytes.resize(bytes.size() - added);
    return bytes;
  }
};

}  // namespace zolt::vt
