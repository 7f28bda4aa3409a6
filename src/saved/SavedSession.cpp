#include "saved/SavedSession.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <type_traits>
#include <utility>

namespace zolt {

namespace {

using Json = nlohmann::json;

constexpr int kVersion = 1;
// More than anybody has, and few enough for any layout to be walked through.
constexpr std::size_t kMostPanes = 1000;
constexpr int kMostCells = 65535;
constexpr int kDeepest = 64;
constexpr double kLargestZoom = 1000;

// Members as they stand, or the default where they are missing or of another type.
template <class Value>
void read(const Json& json, const char* key, Value& value) {
  const auto found = json.find(key);
  if (found == json.end()) return;
  if constexpr (std::is_same_v<Value, std::string>) {
    if (found->is_string()) value = found->get<std::string>();
  } else if constexpr (std::is_same_v<Value, bool>) {
    if (found->is_boolean()) value = found->get<bool>();
  } else if constexpr (std::is_floating_point_v<Value>) {
    if (found->is_number() && std::isfinite(found->get<double>())) value = found->get<double>();
  } else {
    if (found->is_number_integer() && std::in_range<Value>(found->get<std::int64_t>())) value = found->get<Value>();
  }
}

const Json& listIn(const Json& json, const char* key) {
  static const Json kNone = Json::array();
  const auto found = json.find(key);
  return found != json.end() && found->is_array() ? *found : kNone;
}

Json toJson(const SavedPart& part) {
  Json json{{"share", part.share}};
  if (part.pane) {
    json["pane"] = *part.pane;
    return json;
  }
  json["stacked"] = part.isStacked;
  Json& parts = json["parts"] = Json::array();
  for (const SavedPart& each : part.parts) {
    parts.push_back(toJson(each));
  }
  return json;
}

SavedPart partIn(const Json& json, int depth) {
  SavedPart part;
  read(json, "share", part.share);
  if (json.contains("pane")) {
    std::size_t pane = kMostPanes;
    read(json, "pane", pane);
    part.pane = pane;
    return part;
  }
  read(json, "stacked", part.isStacked);
  for (const Json& each : listIn(json, "parts")) {
    if (depth < kDeepest) part.parts.push_back(partIn(each, depth + 1));
  }
  return part;
}

// Counts how often each pane is named.
bool isSound(const SavedPart& part, std::vector<int>& named) {
  if (!(part.share > 0)) return false;
  if (!part.pane) {
    return part.parts.size() > 1 &&
           std::ranges::all_of(part.parts, [&named](const SavedPart& each) { return isSound(each, named); });
  }
  if (*part.pane >= named.size()) return false;
  ++named[*part.pane];
  return true;
}

bool namesEachOnce(const SavedPart& layout, std::size_t panes) {
  std::vector<int> named(panes);
  return isSound(layout, named) && std::ranges::all_of(named, [](int times) { return times == 1; });
}

Json toJson(const SavedPane& pane) {
  return {{"file", pane.file},
          {"folder", pane.folder},
          {"zoom", pane.zoom},
          {"rows", pane.size.rows},
          {"columns", pane.size.columns},
          {"pixelWidth", pane.size.pixelWidth},
          {"pixelHeight", pane.size.pixelHeight}};
}

SavedPane paneIn(const Json& json) {
  SavedPane pane;
  read(json, "file", pane.file);
  // A name, not a way to other folders.
  if (pane.file.find('/') != std::string::npos || pane.file.starts_with('.')) pane.file.clear();
  read(json, "folder", pane.folder);
  read(json, "zoom", pane.zoom);
  pane.zoom = std::clamp(pane.zoom, -kLargestZoom, kLargestZoom);
  TerminalSize size;
  read(json, "rows", size.rows);
  read(json, "columns", size.columns);
  read(json, "pixelWidth", size.pixelWidth);
  read(json, "pixelHeight", size.pixelHeight);
  const auto isPossible = [](int cells) { return cells > 0 && cells <= kMostCells; };
  const auto isLength = [](int pixels) { return pixels >= 0 && pixels <= kMostCells; };
  if (isPossible(size.rows) && isPossible(size.columns) && isLength(size.pixelWidth) && isLength(size.pixelHeight)) {
    pane.size = size;
  }
  return pane;
}

Json toJson(const SavedTab& tab) {
  Json json{{"name", tab.name}, {"layout", toJson(tab.layout)}, {"current", tab.current}, {"zoomed", tab.isZoomed}};
  Json& panes = json["panes"] = Json::array();
  for (const SavedPane& pane : tab.panes) {
    panes.push_back(toJson(pane));
  }
  return json;
}

// Takes at most `room` panes, and leaves what is over.
SavedTab tabIn(const Json& json, std::size_t& room) {
  SavedTab tab;
  read(json, "name", tab.name);
  for (const Json& pane : listIn(json, "panes")) {
    if (room == 0) break;
    --room;
    tab.panes.push_back(paneIn(pane));
  }
  if (const auto layout = json.find("layout"); layout != json.end()) tab.layout = partIn(*layout, 0);
  if (!namesEachOnce(tab.layout, tab.panes.size())) tab.layout = sideBySide(tab.panes.size());
  read(json, "current", tab.current);
  if (tab.current >= tab.panes.size()) tab.current = 0;
  read(json, "zoomed", tab.isZoomed);
  return tab;
}

Json toJson(const SavedWindow& window) {
  Json json{{"x", window.x},
            {"y", window.y},
            {"width", window.width},
            {"height", window.height},
            {"maximized", window.isMaximized},
            {"fullScreen", window.isFullScreen},
            {"current", window.current}};
  Json& tabs = json["tabs"] = Json::array();
  for (const SavedTab& tab : window.tabs) {
    tabs.push_back(toJson(tab));
  }
  return json;
}

SavedWindow windowIn(const Json& json, std::size_t& room) {
  SavedWindow window;
  read(json, "x", window.x);
  read(json, "y", window.y);
  read(json, "width", window.width);
  read(json, "height", window.height);
  read(json, "maximized", window.isMaximized);
  read(json, "fullScreen", window.isFullScreen);
  for (const Json& tab : listIn(json, "tabs")) {
    SavedTab read = tabIn(tab, room);
    if (!read.panes.empty()) window.tabs.push_back(std::move(read));
  }
  read(json, "current", window.current);
  if (window.current >= window.tabs.size()) window.current = 0;
  return window;
}

}  // namespace

SavedPart sideBySide(std::size_t panes) {
  if (panes == 1) return {.pane = 0};
  SavedPart row;
  for (std::size_t i = 0; i < panes; ++i) {
    row.parts.push_back({.pane = i, .share = 1 / static_cast<double>(panes)});
  }
  return row;
}

std::string encodedSession(const SavedSession& session) {
  Json json{{"version", kVersion}, {"time", session.time}};
  Json& windows = json["windows"] = Json::array();
  for (const SavedWindow& window : session.windows) {
    windows.push_back(toJson(window));
  }
  // Folders and names are bytes of any kind.
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::optional<SavedSession> decodedSession(std::string_view bytes) {
  const Json json = Json::parse(bytes, nullptr, false);
  int version = 0;
  if (json.is_object()) read(json, "version", version);
  if (version != kVersion) return std::nullopt;
  SavedSession session;
  read(json, "time", session.time);
  std::size_t room = kMostPanes;
  for (const Json& window : listIn(json, "windows")) {
    SavedWindow read = windowIn(window, room);
    if (!read.tabs.empty()) session.windows.push_back(std::move(read));
  }
  return session;
}

}  // namespace zolt
