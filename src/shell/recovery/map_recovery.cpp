#include "shell/recovery/map_recovery.h"

#include "base/file_names.h"
#include "base/messages.h"
#include "commands/map_facts.h"
#include "mapfile/recovery_differences.h"
#include "model/map_chain.h"
#include "shell/map_window_widget.h"
#include "shell/messages/box_messages.h"
#include "shell/recovery/editor_drafts.h"
#include "shell/recovery/recovery_dialog.h"
#include "shell/shell.h"

#include <QApplication>
#include <QEvent>

#include <algorithm>
#include <chrono>
#include <new>
#include <utility>

namespace orvane {
namespace {

bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TabletMove:
      return true;
    default:
      return false;
  }
}

/// \return how many open windows show a map, or one that uses it as its basis
long WindowsOn(const Shell& shell, const Map& map) {
  const auto& windows = shell.Windows().All();
  return std::count_if(windows.begin(), windows.end(), [&](const MapWindowWidget* window) {
    return RestsOn(window->TheMap(), map);
  });
}

}  // namespace

MapRecovery::MapRecovery(Shell& shell, const std::string& directory, FileSystem system)
    : shell_(shell),
      clock_(shell.Clock()),
      folder_(directory, std::move(system)),
      drafts_(new EditorDrafts(shell, folder_, this)) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &MapRecovery::WriteWhatIsDue);
  connect(&shell.Maps(), &OpenMaps::mapEdited, this, [this](const Map* map) { NoteEdited(*map); });
  connect(&shell.Maps(), &OpenMaps::mapDirtyChanged, this, [this](Map* map) {
    if (!IsDirty(*map)) Settle(*map);
  });
  connect(&shell.Maps(), &OpenMaps::changesDiscarded, this,
          [this](Map* map) { NoteDiscarded(*map); });
  connect(&shell.Windows(), &MapWindows::windowsChanged, this, &MapRecovery::NoteWindows);
  QCoreApplication::instance()->installEventFilter(this);
}

MapRecovery::~MapRecovery() = default;

std::optional<std::vector<Map*>> MapRecovery::OfferCopies() {
  std::vector<RecoveryOffer> offers;
  for (RecoveryCopy& copy : folder_.TakeAbandoned()) {
    const RecoveryDifferences differences = CompareWithFile(copy);
    offers.push_back({.copy = std::move(copy),
                      .differences = DifferenceTexts(differences),
                      .saysTheSame = SaysTheSame(differences)});
  }
  const size_t copies = offers.size();
  const std::vector<RecoveryOffer> drafts = drafts_->TakeAbandoned();
  offers.insert(offers.end(), drafts.begin(), drafts.end());
  if (offers.empty()) return std::vector<Map*>();
  RecoveryDialog dialog(offers, QApplication::activeWindow());
  dialog.exec();
  if (dialog.ExitRequested()) return std::nullopt;
  const std::vector<RecoveryChoice> choices = dialog.Choices();
  std::vector<RecoveryCopy> wanted;
  for (size_t i = 0; i < copies; ++i) {
    if (choices[i] == RecoveryChoice::Recover) wanted.push_back(offers[i].copy);
    if (choices[i] == RecoveryChoice::Discard) folder_.Remove(offers[i].copy.slot);
  }
  const MessageBatch batch(shell_.Boxes(), QStringLiteral("Recovering maps"));
  std::vector<Map*> maps = OpenRecoveryCopies(shell_.TheWorkspace(), wanted);
  for (size_t i = 0; i < maps.size(); ++i) {
    if (maps[i] != nullptr) kept_[maps[i]].slot = wanted[i].slot;
  }
  maps.erase(std::remove(maps.begin(), maps.end(), nullptr), maps.end());
  for (size_t i = copies; i < offers.size(); ++i) {
    if (choices[i] == RecoveryChoice::Recover) drafts_->OpenSoon(i - copies, maps);
    if (choices[i] == RecoveryChoice::Discard) drafts_->Discard(i - copies);
  }
  return maps;
}

void MapRecovery::NoteEdited(const Map& map) {
  if (!IsDirty(map)) return;
  kept_[&map].timing.NoteChange(clock_());
  Schedule();
}

void MapRecovery::NoteDiscarded(const Map& map) {
  for (const Map* each = &map; each != nullptr; each = each->basis) {
    // The closing window still counts. If there is another, the map stays open.
    if (IsDirty(*each) && WindowsOn(shell_, *each) <= 1) Settle(*each);
  }
}

void MapRecovery::NoteWindows() {
  // A map that was closed without saving is still in memory and may come back with its changes.
  for (const MapWindowWidget* window : shell_.Windows().All()) {
    for (const Map* each = &window->TheMap(); each != nullptr; each = each->basis) {
      const auto kept = kept_.find(each);
      const bool unkept = kept == kept_.end() || kept->second.slot.empty();
      if (unkept && IsDirty(*each)) NoteEdited(*each);
    }
  }
}

void MapRecovery::Settle(const Map& map) {
  const auto found = kept_.find(&map);
  if (found == kept_.end()) return;
  Kept& kept = found->second;
  kept.timing.NoteSettled();
  if (!kept.slot.empty()) folder_.Remove(kept.slot);
  kept.slot.clear();
  kept.mark.reset();
}

bool MapRecovery::MayWriteNow() const {
  return QApplication::activeModalWidget() == nullptr &&
         QApplication::activePopupWidget() == nullptr &&
         QApplication::mouseButtons() == Qt::NoButton && !shell_.Boxes().IsBatchOpen() &&
         shell_.TheWorkspace().progress == nullptr;
}

void MapRecovery::WriteWhatIsDue() {
  std::vector<const Map*> failed;
  if (MayWriteNow()) {
    for (Map& map : shell_.TheWorkspace().maps) {
      const auto found = kept_.find(&map);
      if (found == kept_.end()) continue;
      const auto due = found->second.timing.Due(lastInput_);
      if (!due || *due > clock_()) continue;
      WriteCopy(map, found->second);
      if (found->second.timing.Due(std::nullopt)) failed.push_back(&map);
    }
  }
  Schedule();
  if (!failed.empty()) TellOfFailure(*failed.front());
}

void MapRecovery::WriteAll() {
  for (Map& map : shell_.TheWorkspace().maps) {
    const auto found = kept_.find(&map);
    if (found != kept_.end() && found->second.timing.Due(std::nullopt)) {
      WriteCopy(map, found->second);
    }
  }
  drafts_->WriteAll();
  Schedule();
}

void MapRecovery::WriteCopy(Map& map, Kept& kept) {
  try {
    WriteText(map, kept, RecoveryText(map));
  } catch (const std::bad_alloc&) {
    kept.timing.NoteFailed(clock_());
  }
}

void MapRecovery::WriteText(const Map& map, Kept& kept, const std::string& text) {
  const FileMark mark = MarkOf(text);
  if (kept.mark != mark) {
    if (kept.slot.empty()) kept.slot = folder_.NewSlot();
    const bool written =
        !kept.slot.empty() && folder_.Write(kept.slot, RecordOf(map), text) == WriteResult::Done;
    if (!written) {
      kept.timing.NoteFailed(clock_());
      return;
    }
    kept.mark = mark;
    failureShown_ = false;
  }
  kept.timing.NoteWritten(clock_());
}

void MapRecovery::TellOfFailure(const Map& map) {
  if (std::exchange(failureShown_, true)) return;
  NoteWarning(shell_.Boxes(),
              "No recovery copy of %s can be written; the disk may be full. Save your map soon.",
              {BaseName(map.fileName)});
}

void MapRecovery::Schedule() {
  std::optional<RecoveryTiming::Time> next;
  for (const auto& [map, kept] : kept_) {
    const auto due = kept.timing.Due(lastInput_);
    if (due && (!next || *due < *next)) next = due;
  }
  if (!next) {
    timer_.stop();
    return;
  }
  // A copy that could not be written now is tried again soon.
  timer_.start(std::max(*next - clock_(), RecoveryTiming::Stillness));
}

bool MapRecovery::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (timer_.isActive() && IsInput(event->type())) lastInput_ = clock_();
  return false;
}

}  // namespace orvane
