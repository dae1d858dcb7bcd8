#include "shell/map_windows.h"

#include <QWidget>

#include <algorithm>

namespace orvane {

MapWindowWidget& MapWindows::Open(Map& map) {
  MapWindowBase& window = maker_.MakeMapWindow(map);
  windows_.insert(windows_.begin(), &window);
  widgets_.insert(widgets_.begin(), window.MapSide());
  ShowTitles();
  window.Widget().show();
  Q_EMIT windowsChanged();
  return *window.MapSide();
}

void MapWindows::Forget(MapWindowBase& window) {
  const auto found = std::find(windows_.begin(), windows_.end(), &window);
  if (found == windows_.end()) return;
  widgets_.erase(widgets_.begin() + (found - windows_.begin()));
  windows_.erase(found);
  ShowTitles();
  if (windows_.empty()) Q_EMIT lastWindowClosed(&window.Widget());
  Q_EMIT windowsChanged();
}

std::vector<MapWindowWidget*> MapWindows::On(const std::vector<Map*>& maps) const {
  std::vector<MapWindowWidget*> windows;
  for (MapWindowBase* window : windows_) {
    if (std::find(maps.begin(), maps.end(), &window->TheMap()) != maps.end()) {
      windows.push_back(window->MapSide());
    }
  }
  return windows;
}

int MapWindows::CountOn(const Map& map) const {
  return static_cast<int>(
      std::count_if(windows_.begin(), windows_.end(),
                    [&](const MapWindowBase* window) { return &window->TheMap() == &map; }));
}

int MapWindows::FreeNumber(const Map& map) const {
  for (int number = 1;; ++number) {
    const bool isTaken =
        std::any_of(windows_.begin(), windows_.end(), [&](const MapWindowBase* window) {
          return &window->TheMap() == &map && window->Number() == number;
        });
    if (!isTaken) return number;
  }
}

void MapWindows::ShowTitles() {
  for (MapWindowBase* window : windows_) window->ShowTitle();
}

void MapWindows::ShowDirty() {
  for (MapWindowBase* window : windows_) {
    window->ShowTitle();
    window->RefreshMenu();
  }
}

void MapWindows::FollowEdit(const EditNews& news) {
  for (MapWindowBase* window : windows_) window->FollowEdit(news);
}

void MapWindows::RefreshMarksOn(const Map& map) {
  for (MapWindowBase* window : windows_) {
    if (&window->TheMap() == &map) window->RefreshMarks();
  }
}

void MapWindows::ShowPreferences() {
  for (MapWindowBase* window : windows_) window->ShowPreferences();
  Q_EMIT preferencesChanged();
}

void MapWindows::RequestRepaint() {
  for (MapWindowBase* window : windows_) window->RequestRepaint();
}

void MapWindows::ShowWhole(const Map& map) {
  for (MapWindowBase* window : windows_) {
    if (&window->TheMap() == &map) window->ShowWhole();
  }
}

}  // namespace orvane
