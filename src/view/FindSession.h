#pragma once

#include <QObject>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "canvas/CanvasMarks.h"
#include "find/FindPattern.h"
#include "find/FindResults.h"
#include "history/HistoryText.h"
#include "platform/Clock.h"

namespace zolt {

/// A search of a text that grows, and of which the last blocks may change: the matches found so far, and the current
/// match.
///
/// The text is searched on worker threads, newest first, a few milliseconds' worth at a time; new text is searched soon
/// after it arrives. What is needed for the next match, or to paint the rows in view, is searched first. Main thread.
class FindSession : public QObject, public CanvasMarks {
  Q_OBJECT

 public:
  /// `text` must outlive the session.
  explicit FindSession(const HistoryText& text, Clock& clock = Clock::steady());
  ~FindSession() override;

  /// Searches for `pattern` from now on. The current match will be the last one that begins before `from`, or the last
  /// of all if there is none.
  void search(const FindPattern& pattern, TextPosition from);
  /// Ends the search.
  void stop();
  bool isActive() const { return m_pattern.has_value(); }
  /// To be called whenever the text has changed. Matches in what it no longer has are forgotten at once; what has come
  /// or changed is searched soon.
  void textChanged();
  /// To be called instead when it has become another text, whose places have nothing to do with those before. That is
  /// searched soon from its end; no match is current until the next step to one.
  void textReplaced();
  /// To be called before `textChanged` when places in the text have moved: the current match goes along.
  void movePlaces(const std::function<TextPosition(TextPosition)>& moved);

  /// Matches found so far.
  std::uint64_t count() const { return m_results.count(); }
  /// Whether some of the text is still to be searched, not counting text that has just arrived.
  bool isSearching() const;
  /// The current match; none at first, where nothing matches, and once it is no longer there.
  std::optional<TextRange> current() const;
  /// Its number, from 1 at the top; nothing until all text before it has been searched.
  std::optional<std::uint64_t> numberOfCurrent() const;
  /// Go to the match before or after the current one, wrapping around at the ends. If that match is not known yet, it
  /// becomes current as soon as it is found.
  void goBackward() { go(Direction::Backward); }
  void goForward() { go(Direction::Forward); }

  /// The parts of the text that contain matches, for a scroll bar.
  std::vector<TextRange> spread() const;
  RowMarks marksIn(TextRange row) override;

 Q_SIGNALS:
  /// More has been found, or the search has changed.
  void resultsChanged();
  /// The current match has changed.
  void currentChanged();
  /// The search was given up: the pattern takes too long on this text.
  void gaveUp();

 private:
  enum class Direction { Backward, Forward };

  // A step to another match that waits for a segment to be searched.
  struct Walk {
    Direction direction = Direction::Backward;
    TextPosition from;
    bool wrapped = false;
  };
  struct Segments {
    std::size_t first = 0;
    std::size_t end = 0;

    bool operator==(const Segments&) const = default;
  };
  struct Found {
    std::size_t segment = 0;
    TextRange extent;
    std::vector<TextRange> matches;
  };
  struct Job;
  struct Outcome {
    std::vector<Found> found;
    bool tookTooLong = false;
  };

  void begin(TextPosition from);
  void forgetAll();
  static Outcome run(const Job& job);
  void take(const Job& job, Outcome outcome);
  void pump();
  void start(Segments segments);
  std::optional<Segments> nextSegments();
  bool isUnderWay(std::size_t segment) const;
  void searchTail();
  void go(Direction direction);
  void walk();
  void setCurrent(const TextRange& match);
  void dropCurrent();
  void dropCurrentIfGone();
  const std::vector<TextRange>* matchesIn(std::size_t segment);
  std::optional<std::vector<TextRange>> matchesAtOnce(const TextRange& row, std::size_t segment) const;

  const HistoryText& m_text;
  std::optional<FindPattern> m_pattern;
  FindResults m_results;
  std::optional<TextRange> m_current;
  TextPosition m_from;
  std::optional<Walk> m_walk;

  std::shared_ptr<std::atomic<bool>> m_stop;  // stops the jobs in flight
  std::vector<Segments> m_underWay;           // the segments they search
  std::vector<std::size_t> m_wanted;  // needed for the view or the next match: searched first, latest request last
  std::vector<std::size_t> m_stale;   // searched, or being searched, but the text has changed since
  std::size_t m_unknownBelow = 0;     // segments from here on are known
  std::size_t m_firstOpen = 0;        // known segments from here on change with the text
  bool m_isReplaced = false;          // and not searched yet: it may be replaced again at once
  std::unique_ptr<Timer> m_tailTimer;
};

}  // namespace zolt
