#include "view/FindSession.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <thread>
#include <utility>

#include "find/FindScanner.h"
#include "find/LogSearch.h"
#include "platform/MainQueue.h"
#include "platform/WorkerQueue.h"
#include "view/LogRowSource.h"

namespace zolt {

namespace {

// A job runs for this long, then reports what it has found.
constexpr std::chrono::milliseconds kJobTime{15};
// The maximum number of segments per job: about as many as fit its time.
constexpr std::size_t kJobSegments = 16;
// A job also reports as soon as it has found this many matches.
constexpr std::size_t kJobMatches = std::size_t{1} << 18;
// How often new text is searched.
constexpr std::chrono::milliseconds kTailInterval{100};
// A segment takes a few milliseconds. A pattern that takes a thousand times as long would never finish.
constexpr std::chrono::seconds kSegmentTime{4};

// Jobs at once: decompressing keeps a processor busy.
std::size_t maxJobs() {
  return std::clamp(std::thread::hardware_concurrency(), 1U, 4U);
}

// This thread's CPU time, so that other load does not count against the pattern.
std::chrono::nanoseconds threadTime() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

void addOnce(std::vector<std::size_t>& list, std::size_t segment) {
  if (std::ranges::find(list, segment) == list.end()) list.push_back(segment);
}

std::size_t takeLast(std::vector<std::size_t>& list) {
  const std::size_t last = list.back();
  list.pop_back();
  return last;
}

}  // namespace

struct FindSession::Job {
  FindPattern pattern;
  TextSnapshot snapshot;
  Segments segments;
  std::shared_ptr<std::atomic<bool>> stop;
};

FindSession::FindSession(const HistoryText& text, Clock& clock)
    : m_text(text), m_tailTimer(clock.makeTimer([this] { searchTail(); })) {}

FindSession::~FindSession() {
  if (m_stop) *m_stop = true;
}

void FindSession::search(const FindPattern& pattern, TextPosition from) {
  stop();
  m_pattern = pattern;
  begin(from);
  m_walk = Walk{.direction = Direction::Backward, .from = m_from};
  walk();
  pump();
}

void FindSession::begin(TextPosition from) {
  m_stop = std::make_shared<std::atomic<bool>>(false);
  m_from = from;
  m_results.forgetBefore(firstSegment(m_text), m_text.begin());
  m_firstOpen = m_unknownBelow = segmentCount(m_text);
}

void FindSession::stop() {
  forgetAll();
  m_pattern.reset();
  m_tailTimer->stop();
  m_isReplaced = false;
  Q_EMIT resultsChanged();
}

// Running jobs stop where they next check the flag; what they report after that is ignored.
void FindSession::forgetAll() {
  if (m_stop) *std::exchange(m_stop, nullptr) = true;
  m_underWay.clear();
  m_results.clear();
  m_current.reset();
  m_walk.reset();
  m_wanted.clear();
  m_stale.clear();
}

void FindSession::textReplaced() {
  if (!isActive()) return;
  forgetAll();
  begin(m_text.end());
  m_isReplaced = true;
  if (!m_tailTimer->isActive()) m_tailTimer->start(kTailInterval);
  Q_EMIT resultsChanged();
}

void FindSession::movePlaces(const std::function<TextPosition(TextPosition)>& moved) {
  m_from = moved(m_from);
  if (!m_current) return;
  const TextRange place{.begin = moved(m_current->begin), .end = moved(m_current->end)};
  if (place.length() != m_current->length()) return dropCurrent();
  m_current = place;
}

bool FindSession::isSearching() const {
  return isActive() && (m_unknownBelow > firstSegment(m_text) || m_walk);
}

void FindSession::textChanged() {
  if (!isActive()) return;
  if (!m_tailTimer->isActive()) m_tailTimer->start(kTailInterval);
  const std::uint64_t before = m_results.count();
  m_results.forgetBefore(firstSegment(m_text), m_text.begin());
  m_results.forgetAfter(segmentCount(m_text), m_text.end());
  if (m_current && (m_current->begin < m_text.begin() || m_current->end > m_text.end())) dropCurrent();
  if (m_results.count() != before) Q_EMIT resultsChanged();
}

// Searches the segments that were last when they were searched, and those that have arrived since.
void FindSession::searchTail() {
  m_isReplaced = false;
  const std::size_t count = segmentCount(m_text);
  for (std::size_t segment = std::max(m_firstOpen, firstSegment(m_text)); segment < count; ++segment) {
    if (m_results.isKnown(segment) || isUnderWay(segment)) addOnce(m_stale, segment);
  }
  m_firstOpen = m_unknownBelow = count;
  pump();
}

std::optional<FindSession::Segments> FindSession::nextSegments() {
  const std::size_t begin = firstSegment(m_text);
  const std::size_t count = segmentCount(m_text);
  const auto isThere = [&](std::size_t segment) { return segment >= begin && segment < count; };
  m_unknownBelow = std::min(m_unknownBelow, count);
  while (m_unknownBelow > begin && m_results.isKnown(m_unknownBelow - 1)) {
    --m_unknownBelow;
  }
  while (!m_wanted.empty()) {
    const std::size_t segment = takeLast(m_wanted);
    if (!isThere(segment) || isUnderWay(segment)) continue;
    if (m_results.matchesIn(segment) == nullptr) return Segments{segment, segment + 1};
  }
  std::erase_if(m_stale, [&](std::size_t segment) { return !isThere(segment); });
  // Not while a job with an older snapshot is searching it: its result would arrive last and replace the newer one.
  const auto stale = std::ranges::find_if(m_stale, [this](std::size_t segment) { return !isUnderWay(segment); });
  if (stale != m_stale.end()) {
    const Segments segments{*stale, *stale + 1};
    m_stale.erase(stale);
    return segments;
  }
  const auto isToBeSearched = [this](std::size_t segment) {
    return !m_results.isKnown(segment) && !isUnderWay(segment);
  };
  std::size_t end = m_unknownBelow;
  while (end > begin && !isToBeSearched(end - 1)) {
    --end;
  }
  if (end <= begin) return std::nullopt;
  Segments segments{.first = end - 1, .end = end};
  while (segments.first > begin && segments.end - segments.first < kJobSegments && isToBeSearched(segments.first - 1)) {
    --segments.first;
  }
  return segments;
}

bool FindSession::isUnderWay(std::size_t segment) const {
  return std::ranges::any_of(
      m_underWay, [&](const Segments& segments) { return segment >= segments.first && segment < segments.end; });
}

void FindSession::pump() {
  while (isActive() && !m_isReplaced && m_underWay.size() < maxJobs()) {
    const std::optional<Segments> segments = nextSegments();
    if (!segments) return;
    start(*segments);
  }
}

void FindSession::start(Segments segments) {
  const std::size_t firstOpen = firstOpenSegment(m_text);
  if (segments.end > firstOpen) m_firstOpen = std::min(m_firstOpen, std::max(firstOpen, segments.first));
  m_underWay.push_back(segments);
  auto job = std::make_shared<const Job>(Job{.pattern = *m_pattern,
                                             .snapshot = snapshotOfSegments(m_text, segments.first, segments.end),
                                             .segments = segments,
                                             .stop = m_stop});
  WorkerQueue::utility().async([job, owner = MainQueue::Owner(this), this] {
    auto outcome = std::make_shared<Outcome>(run(*job));
    MainQueue::async(owner, [job, outcome, this] {
      if (!*job->stop) take(*job, std::move(*outcome));
    });
  });
}

// On a worker thread: accesses nothing but the job.
FindSession::Outcome FindSession::run(const Job& job) {
  Outcome outcome;
  const auto begun = std::chrono::steady_clock::now();
  std::size_t matches = 0;
  for (std::size_t segment = job.segments.end; segment-- > job.segments.first;) {
    const std::chrono::nanoseconds before = threadTime();
    FindInterrupt interrupt([&] { return *job.stop || threadTime() - before > kSegmentTime; });
    Found found{
        .segment = segment, .extent = {}, .matches = findInSegment(job.pattern, job.snapshot, segment, interrupt)};
    if (interrupt.hasStopped()) {
      outcome.tookTooLong = true;
      break;
    }
    found.extent = extentOfSegment(job.snapshot, segment);
    matches += found.matches.size();
    outcome.found.push_back(std::move(found));
    if (std::chrono::steady_clock::now() - begun > kJobTime || matches > kJobMatches) break;
  }
  return outcome;
}

void FindSession::take(const Job& job, Outcome outcome) {
  m_underWay.erase(std::ranges::find(m_underWay, job.segments));
  for (Found& found : outcome.found) {
    m_results.set(found.segment, found.extent, std::move(found.matches));
  }
  // The text may have changed while the job read a snapshot of it.
  m_results.forgetBefore(firstSegment(m_text), m_text.begin());
  m_results.forgetAfter(segmentCount(m_text), m_text.end());
  dropCurrentIfGone();
  if (outcome.tookTooLong) {
    stop();
    Q_EMIT gaveUp();
    return;
  }
  walk();
  pump();
  Q_EMIT resultsChanged();
}

void FindSession::go(Direction direction) {
  if (!isActive()) return;
  const bool backward = direction == Direction::Backward;
  const TextPosition from = m_current ? (backward ? m_current->begin : m_current->begin + 1) : m_from;
  m_walk = Walk{.direction = direction, .from = from};
  walk();
  pump();
}

// Continues the walk as far as the results reach.
void FindSession::walk() {
  while (m_walk) {
    m_walk->from = std::clamp(m_walk->from, m_text.begin(), m_text.end());
    const std::size_t segment = segmentAt(m_text, m_walk->from);
    const bool backward = m_walk->direction == Direction::Backward;
    const FindResults::Step step = backward ? m_results.lastBefore(segment, m_walk->from)
                                            : m_results.firstFrom(segment, m_walk->from, segmentCount(m_text));
    if (step.match) {
      m_walk.reset();
      setCurrent(*step.match);
    } else if (step.missing) {
      addOnce(m_wanted, *step.missing);
      return;
    } else if (std::exchange(m_walk->wrapped, true)) {
      m_walk.reset();
    } else {
      m_walk->from = backward ? m_text.end() : m_text.begin();
    }
  }
}

void FindSession::setCurrent(const TextRange& match) {
  m_current = match;
  Q_EMIT currentChanged();
}

// The walk to the next match goes on from where it was.
void FindSession::dropCurrent() {
  m_from = m_current->begin;
  m_current.reset();
}

// Where the text can change, a match may be gone when its segment is searched again.
void FindSession::dropCurrentIfGone() {
  if (!m_current) return;
  const std::vector<TextRange>* matches = m_results.matchesIn(segmentAt(m_text, m_current->begin));
  if (matches == nullptr) return;
  if (!std::ranges::binary_search(*matches, m_current->begin, {}, &TextRange::begin)) dropCurrent();
}

std::optional<TextRange> FindSession::current() const {
  return m_current;
}

std::optional<std::uint64_t> FindSession::numberOfCurrent() const {
  if (!m_current) return std::nullopt;
  const auto before = m_results.countBefore(segmentAt(m_text, m_current->begin), m_current->begin);
  return before ? std::optional(*before + 1) : std::nullopt;
}

std::vector<TextRange> FindSession::spread() const {
  return m_results.spread();
}

// The segment's matches. If they are not available the segment is searched, and resultsChanged is emitted then.
const std::vector<TextRange>* FindSession::matchesIn(std::size_t segment) {
  const std::vector<TextRange>* matches = m_results.matchesIn(segment);
  if (matches == nullptr && segment < segmentCount(m_text)) {
    addOnce(m_wanted, segment);
    pump();
  }
  return matches;
}

// In the newest text, for a plain query: under load a row would be out of view before a job had searched it.
std::optional<std::vector<TextRange>> FindSession::matchesAtOnce(const TextRange& row, std::size_t segment) const {
  const bool isNewest = segment + 2 >= segmentCount(m_text);
  if (!isNewest || !std::holds_alternative<PlainNeedle>(m_pattern->matcher())) return std::nullopt;
  const TextPosition from = std::max(row.begin.backBy(FindPattern::kQueryBytes), m_text.begin());
  const TextPosition to = std::min(row.end + FindPattern::kQueryBytes, m_text.end());
  std::vector<TextRange> matches;
  FindScanner scanner(*m_pattern, from);
  scanner.feed(m_text.text(from, to), matches);
  scanner.finish(matches);
  return matches;
}

RowMarks FindSession::marksIn(TextRange row) {
  RowMarks marks;
  if (!isActive() || row.empty()) return marks;
  const auto take = [&](const TextRange& match) {
    const TextRange part{.begin = std::max(match.begin, row.begin), .end = std::min(match.end, row.end)};
    if (part.empty()) return;
    if (m_current && match == *m_current) {
      marks.current = part;
    } else {
      marks.found.push_back(part);
    }
  };
  const std::size_t first = segmentAt(m_text, row.begin);
  const std::size_t last = segmentAt(m_text, row.end - 1);
  if (const auto matches = matchesAtOnce(row, last)) {
    std::ranges::for_each(*matches, take);
    return marks;
  }
  for (std::size_t segment = first == 0 ? 0 : first - 1; segment <= last; ++segment) {
    // The segment before matters only if a match reaches from it into the row.
    const std::vector<TextRange>* matches = segment < first ? m_results.matchesIn(segment) : matchesIn(segment);
    if (matches == nullptr) continue;
    auto match = std::ranges::lower_bound(*matches, row.begin, {}, &TextRange::begin);
    if (match != matches->begin()) --match;
    for (; match != matches->end() && match->begin < row.end; ++match) {
      take(*match);
    }
  }
  return marks;
}

}  // namespace zolt
