#include "shell/monkey.h"

#include "shell/command_menu.h"
#include "shell/comment_edit.h"
#include "shell/entry/sheet_dialog.h"
#include "shell/map/map_view.h"
#include "shell/map_window_widget.h"
#include "shell/progress/busy_work.h"
#include "shell/progress/progress_box.h"
#include "shell/recovery/map_recovery.h"
#include "shell/task_window.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QTest>
#include <QUrl>
#include <QWheelEvent>

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <utility>

namespace orvane {
namespace {

/// More windows than this are not kept open: each is painted after most events.
constexpr size_t MostMapWindows = 4;
/// So many answers to the boxes of one event are picked freely; then all is cancelled.
constexpr int FreeAnswers = 60;
constexpr size_t EventsKept = 40;

/// Where a window's place in the order of all is kept.
constexpr auto SerialProperty = "monkeySerial";

QString Described(const QWidget& widget) {
  return QString::fromLatin1(widget.metaObject()->className()) + QLatin1Char(' ') +
         widget.objectName();
}

}  // namespace

/// Answers the dialogs for files, whose own windows belong to the platform.
class Monkey::Dialogs final : public FileDialogs {
 public:
  explicit Dialogs(Monkey& monkey) : monkey_(monkey) {}

  FileAnswer AskOpen(const std::string& title, FileSpecification& file) override {
    return Answer(title, file, monkey_.dice_.OneIn(6) ? std::string() : monkey_.AnyFile());
  }
  FileAnswer AskSave(const std::string& title, FileSpecification& file) override {
    std::string path = monkey_.dice_.OneIn(4) ? std::string() : monkey_.AnyNewFile();
    // A question that comes back until it is answered with this very name.
    if (!path.empty() && file.type == "shp" && !monkey_.dice_.OneIn(3)) {
      path = monkey_.folder_.Path("points.shp");
    }
    if (!path.empty()) monkey_.AllowWriting(path);
    return Answer(title, file, path);
  }

 private:
  FileAnswer Answer(const std::string& title, FileSpecification& file, const std::string& path) {
    monkey_.Note("  file for \"" + title + "\": " + path);
    if (path.empty()) return FileAnswer::Canceled;
    const size_t slash = path.rfind('/');
    file.directory = path.substr(0, slash);
    file.name = path.substr(slash + 1);
    return FileAnswer::Chosen;
  }

  Monkey& monkey_;
};

Monkey::Monkey(std::uint64_t seed)
    : seed_(seed),
      dice_(seed),
      maps_(dice_),
      workspace_(boxes_),
      program_(workspace_, boxes_, around_) {
  Note("seed " + std::to_string(seed));
  // It stays to the end of the program, as that of a real screen does.
  static QPointingDevice* const screen = QTest::createTouchDevice();
  fingers_ = screen;
  dialogs_ = std::make_unique<Dialogs>(*this);
  around_.otherDialogs = dialogs_.get();
  shell_.TheSettings().dialogDirectory = folder_.Path();
  around_.ended = [this] { ended_ = true; };
  around_.endedAtOnce = [this] {
    ADD_FAILURE() << "a fatal message\n" << LastEvents();
    ended_ = true;
  };
  program_.KeepPreferencesIn(own_.Path());
  recovery_ = &program_.KeepCopiesIn(own_.Path("recovery"));
  around_.clock = [this] { return time_ + WatchWork(); };
  // Without it every question for help asks for its file.
  if (dice_.OneIn(2)) std::filesystem::create_symlink(HELP_FILE, own_.Path("Orvane.qch"));
  connect(&shell_.Maps(), &OpenMaps::mapSaved, this, [this](Map* map, const QString&) {
    EXPECT_EQ(map->flags & MapDirty, 0U);
    AllowWriting(map->fileName);
  });
  shell_.History().Listen([this](const EditNews&) { mayDiffer_ = true; });
  connect(&shell_.Maps(), &OpenMaps::mapReread, this, [this] { mayDiffer_ = true; });
  startTimer(0);
  std::string basis;
  for (int i = 0; i < 8; ++i) {
    const std::string name = "map" + std::to_string(i) + ".map";
    folder_.Write(name, maps_.Text(dice_.OneIn(2) ? basis : std::string()));
    basis = name;
  }
  for (int i = 0; i < 3; ++i) {
    folder_.Write("gps" + std::to_string(i) + ".txt", maps_.GpsText());
    folder_.Write("sheet" + std::to_string(i) + ".txt", maps_.SheetText());
  }
  std::filesystem::create_directory(folder_.Path("sub"));
  files_ = ReadAllFiles();
  StartUp();
}

Monkey::~Monkey() {
  for (Map& map : workspace_.maps) map.flags &= ~std::uint32_t{MapDirty};
  while (!shell_.Windows().All().empty()) shell_.Windows().All().front()->TryClose();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Monkey::Note(const std::string& event) {
  events_.push_back(event);
  if (events_.size() > EventsKept) events_.pop_front();
  if (qEnvironmentVariableIsSet("MONKEY_TRACE")) std::fprintf(stderr, "%s\n", event.c_str());
}

std::string Monkey::LastEvents() const {
  std::string text = "seed " + std::to_string(seed_) + ", the last events:\n";
  for (const std::string& event : events_) text += "  " + event + "\n";
  return text;
}

void Monkey::AllowWriting(const std::string& path) {
  std::error_code error;
  writable_.insert(std::filesystem::weakly_canonical(path, error).string());
}

void Monkey::StartUp() {
  std::vector<std::string> files;
  for (int i = dice_.Below(3); i > 0; --i) files.push_back(AnyFile());
  Note("start with " + std::to_string(files.size()) + " files");
  ended_ = false;
  program_.Start(files);
  AfterEvent();
}

// --- What it finds ----------------------------------------------------------------------------

std::vector<QWidget*> Monkey::Windows() {
  std::vector<QWidget*> windows;
  const QWidgetList all = QApplication::topLevelWidgets();
  for (QWidget* widget : all) {
    if (widget->isVisible() && widget->windowType() != Qt::Popup &&
        widget->windowType() != Qt::ToolTip) {
      windows.push_back(widget);
    }
  }
  // The toolkit lists them in the order of their addresses.
  const auto isNew = [](const QWidget* widget) {
    return !widget->property(SerialProperty).isValid();
  };
  std::sort(windows.begin(), windows.end(), [&](const QWidget* a, const QWidget* b) {
    if (isNew(*&a) != isNew(*&b)) return isNew(b);
    if (isNew(a)) {
      return std::pair(Described(*a), a->windowTitle()) <
             std::pair(Described(*b), b->windowTitle());
    }
    return a->property(SerialProperty).toInt() < b->property(SerialProperty).toInt();
  });
  for (QWidget* widget : windows) {
    if (isNew(widget)) widget->setProperty(SerialProperty, ++windowsSeen_);
  }
  return windows;
}

std::vector<QWidget*> Monkey::ControlsOf(QWidget& window) const {
  std::vector<QWidget*> controls{&window};
  const auto children = window.findChildren<QWidget*>();
  for (QWidget* child : children) {
    if (child->isVisible() && child->window() == &window) controls.push_back(child);
  }
  return controls;
}

QWidget* Monkey::AnyWindow() {
  std::vector<QWidget*> windows = Windows();
  return windows.empty() ? nullptr : dice_.Of(windows);
}

MapWindowWidget* Monkey::AnyMapWindow() {
  const std::vector<MapWindowWidget*>& windows = shell_.Windows().All();
  return windows.empty() ? nullptr : dice_.Of(windows);
}

MapView* Monkey::AnyMapView() {
  MapWindowWidget* window = AnyMapWindow();
  return window == nullptr ? nullptr : &window->View();
}

QPoint Monkey::AnyPointOf(const QWidget& widget) {
  return {dice_.Below(std::max(1, widget.width())), dice_.Below(std::max(1, widget.height()))};
}

Qt::KeyboardModifiers Monkey::AnyModifiers() {
  Qt::KeyboardModifiers modifiers = Qt::NoModifier;
  if (dice_.OneIn(4)) modifiers |= Qt::ShiftModifier;
  if (dice_.OneIn(4)) modifiers |= Qt::ControlModifier;
  if (dice_.OneIn(10)) modifiers |= Qt::AltModifier;
  return modifiers;
}

std::string Monkey::AnyFile() {
  std::vector<std::string> names{"missing.map", "sub", "sub/missing.map"};
  for (const auto& [path, text] : files_) names.push_back(path);
  return folder_.Path(dice_.Of(names));
}

std::string Monkey::AnyNewFile() {
  static constexpr std::array<std::string_view, 14> Names{
      "map0.map",   "map3.map",           "map5.map",  "new1.map", "new2.map",
      "sub/a.map",  "sub/b.map",          "a.png",     "b.svg",    "c.pdf",
      "points.shp", "no/such/folder.map", "no ending", "d.xyz"};
  return folder_.Path(dice_.Of(Names));
}

// --- What it does -----------------------------------------------------------------------------

void Monkey::Act() {
  using Action = void (Monkey::*)();
  static constexpr std::array<std::pair<int, Action>, 15> Actions{
      {{22, &Monkey::PressKey},
       {24, &Monkey::UseMouse},
       {6, &Monkey::TurnWheel},
       {4, &Monkey::Pinch},
       {20, &Monkey::PickCommand},
       {3, &Monkey::PickListEntry},
       {4, &Monkey::RunByNumber},
       {5, &Monkey::Resize},
       {6, &Monkey::MoveFocus},
       {3, &Monkey::CloseWindow},
       {2, &Monkey::DropFiles},
       {4, &Monkey::Edit},
       {1, &Monkey::LetOthersWrite},
       {2, &Monkey::LetTimePass},
       {2, &Monkey::ChangeWindowState}}};
  int all = 0;
  for (const auto& [weight, action] : Actions) all += weight;
  int pick = dice_.Below(all);
  boxSteps_ = 0;
  for (const auto& [weight, action] : Actions) {
    if (pick < weight) {
      (this->*action)();
      break;
    }
    pick -= weight;
  }
  AfterEvent();
}

void Monkey::AfterEvent() {
  while (QWidget* popup = QApplication::activePopupWidget()) {
    if (dice_.OneIn(3)) {
      QTest::keyClick(popup, dice_.OneIn(2) ? Qt::Key_Down : Qt::Key_Return);
    } else {
      popup->close();
    }
  }
  QApplication::processEvents();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  while (shell_.Windows().All().size() > MostMapWindows) {
    Note("close one of too many");
    MapWindowWidget* oldest = shell_.Windows().All().back();
    oldest->close();
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  if (ended_) StartUp();
}

void Monkey::PressKey() {
  static constexpr std::array<Qt::Key, 40> Keys{
      Qt::Key_Up,    Qt::Key_Down,   Qt::Key_Left,     Qt::Key_Right,  Qt::Key_Up,
      Qt::Key_Plus,  Qt::Key_Minus,  Qt::Key_Escape,   Qt::Key_Tab,    Qt::Key_Backtab,
      Qt::Key_Space, Qt::Key_Return, Qt::Key_Delete,   Qt::Key_Home,   Qt::Key_End,
      Qt::Key_F1,    Qt::Key_F11,    Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Backspace,
      Qt::Key_Alt,   Qt::Key_0,      Qt::Key_1,        Qt::Key_A,      Qt::Key_B,
      Qt::Key_C,     Qt::Key_D,      Qt::Key_E,        Qt::Key_F,      Qt::Key_G,
      Qt::Key_H,     Qt::Key_I,      Qt::Key_M,        Qt::Key_N,      Qt::Key_O,
      Qt::Key_S,     Qt::Key_T,      Qt::Key_V,        Qt::Key_W,      Qt::Key_Z};
  QWidget* window = AnyWindow();
  if (window == nullptr) return;
  if (dice_.OneIn(3)) window->activateWindow();
  QWidget* target = window->focusWidget() != nullptr ? window->focusWidget() : window;
  const Qt::Key key = dice_.Of(Keys);
  const Qt::KeyboardModifiers modifiers = AnyModifiers();
  Note("key " + QKeySequence(QKeyCombination(modifiers, key)).toString().toStdString() + " to " +
       Described(*target).toStdString());
  switch (dice_.Below(8)) {
    case 0:
      QTest::keyPress(target, key, modifiers);
      break;
    case 1:
      QTest::keyRelease(target, key, modifiers);
      break;
    default:
      QTest::keyClick(target, key, modifiers);
  }
}

void Monkey::UseMouse() {
  QWidget* target = AnyMapView();
  QWidget* window = AnyWindow();
  if (window == nullptr) return;
  if (target == nullptr || dice_.OneIn(3)) {
    std::vector<QWidget*> controls = ControlsOf(*window);
    target = dice_.Of(controls);
  }
  static constexpr std::array<Qt::MouseButton, 4> Buttons{Qt::LeftButton, Qt::LeftButton,
                                                          Qt::RightButton, Qt::MiddleButton};
  const Qt::MouseButton button = dice_.Of(Buttons);
  const Qt::KeyboardModifiers modifiers = AnyModifiers();
  const QPoint at = AnyPointOf(*target);
  const QPoint to = AnyPointOf(*target);
  const int kind = dice_.Below(6);
  Note("mouse " + std::to_string(kind) + " button " + std::to_string(button) + " at " +
       std::to_string(at.x()) + "," + std::to_string(at.y()) + " of " +
       Described(*target).toStdString());
  const QPointer<QWidget> alive = target;
  switch (kind) {
    case 0:
      QTest::mousePress(target, button, modifiers, at);
      break;
    case 1:
      QTest::mouseRelease(target, button, modifiers, at);
      break;
    case 2:
      QTest::mouseMove(target, at);
      break;
    case 3:
      QTest::mouseDClick(target, button, modifiers, at);
      break;
    case 4:
      QTest::mouseClick(target, button, modifiers, at);
      break;
    default:
      QTest::mousePress(target, button, modifiers, at);
      if (!alive.isNull()) QTest::mouseMove(target, to);
      QApplication::processEvents();
      if (!alive.isNull()) QTest::mouseRelease(target, button, modifiers, to);
  }
}

void Monkey::TurnWheel() {
  MapView* view = AnyMapView();
  if (view == nullptr) return;
  static constexpr std::array<int, 8> Units{0, 1, -7, 120, -120, 1200, -6000, 100000};
  const QPoint at = AnyPointOf(*view);
  const QPoint delta(dice_.Of(Units), dice_.Of(Units));
  Note("wheel " + std::to_string(delta.y()) + " at " + std::to_string(at.x()) + "," +
       std::to_string(at.y()));
  QWheelEvent event(at, view->mapToGlobal(at), QPoint(), delta, Qt::NoButton, AnyModifiers(),
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(view, &event);
}

void Monkey::Pinch() {
  MapView* view = AnyMapView();
  if (view == nullptr) return;
  const QPoint at = AnyPointOf(*view);
  if (dice_.OneIn(2)) {
    const double value = dice_.OneIn(10) ? 1e300 : dice_.Between(-2, 3);
    Note("pinch of the touch pad by " + std::to_string(value));
    QNativeGestureEvent event(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2,
                              at, at, view->mapToGlobal(at), value, QPointF());
    QApplication::sendEvent(view, &event);
    return;
  }
  Note("pinch by two fingers");
  const QPoint other = AnyPointOf(*view);
  QTest::touchEvent(view, fingers_).press(0, at).press(1, other);
  for (int i = dice_.Below(6); i > 0; --i) {
    QTest::touchEvent(view, fingers_).move(0, AnyPointOf(*view)).move(1, AnyPointOf(*view));
  }
  QTest::touchEvent(view, fingers_).release(0, at).release(1, other);
}

void Monkey::PickCommand() {
  const CommandInfo& command = dice_.Of(std::as_const(*[] {
    static const std::vector<CommandInfo> all(AllCommands().begin(), AllCommands().end());
    return &all;
  }()));
  if (IsSubmenu(command.id)) return;
  QWidget* window = AnyWindow();
  if (window == nullptr) return;
  // Exit would end every run before it has come far.
  if (command.id == CommandExit && !dice_.OneIn(3)) return;
  auto* action =
      window->findChild<QAction*>(QStringLiteral("command%1").arg(static_cast<int>(command.id)));
  if (action == nullptr) return;
  Note("command " + std::string(command.text) + " of " + Described(*window).toStdString() +
       (action->isEnabled() ? "" : " (disabled)"));
  if (dice_.OneIn(2)) window->activateWindow();
  action->trigger();
}

void Monkey::PickListEntry() {
  MapWindowWidget* window = AnyMapWindow();
  if (window == nullptr) return;
  QMenu& menu = window->Commands().MenuOf(dice_.OneIn(2) ? CommandRecentMaps : CommandWindowList);
  Q_EMIT menu.aboutToShow();
  const QList<QAction*> actions = menu.actions();
  if (actions.isEmpty()) return;
  QAction* action = actions[dice_.Below(static_cast<int>(actions.size()))];
  Note("entry " + action->text().toStdString());
  action->trigger();
}

void Monkey::RunByNumber() {
  static constexpr std::array<int, 12> Numbers{CommandOpenBasis,
                                               CommandSetBasis,
                                               CommandSave,
                                               CommandDelete,
                                               CommandCheckTrails,
                                               CommandPrint,
                                               CommandFind,
                                               CommandDeviation,
                                               4711,
                                               -1,
                                               32450,
                                               CommandRecentMaps};
  MapWindowWidget* window = AnyMapWindow();
  if (window == nullptr) return;
  const int number = dice_.Of(Numbers);
  Note("command number " + std::to_string(number));
  shell_.Commands().Run(number, *window);
}

void Monkey::Resize() {
  QWidget* window = AnyWindow();
  // No platform lets a window that fills the screen be drawn to another size.
  if (window == nullptr || window->isFullScreen() || window->isMaximized()) return;
  const QSize size =
      dice_.OneIn(5) ? QSize(1, 1) : QSize(100 + dice_.Below(700), 80 + dice_.Below(500));
  Note("resize to " + std::to_string(size.width()) + "x" + std::to_string(size.height()));
  window->resize(size);
}

void Monkey::MoveFocus() {
  QWidget* window = AnyWindow();
  if (window == nullptr) return;
  if (dice_.OneIn(2)) window->activateWindow();
  std::vector<QWidget*> controls = ControlsOf(*window);
  QWidget* control = dice_.Of(controls);
  Note("focus to " + Described(*control).toStdString());
  if (dice_.OneIn(8)) {
    control->clearFocus();
  } else {
    control->setFocus(dice_.OneIn(2) ? Qt::TabFocusReason : Qt::MouseFocusReason);
  }
}

void Monkey::CloseWindow() {
  QWidget* window = AnyWindow();
  if (window == nullptr) return;
  Note("close " + Described(*window).toStdString());
  window->close();
}

void Monkey::DropFiles() {
  QWidget* window = AnyWindow();
  if (window == nullptr) return;
  QMimeData data;
  QList<QUrl> urls;
  for (int i = dice_.Below(3); i > 0; --i) {
    urls.append(QUrl::fromLocalFile(QString::fromStdString(AnyFile())));
  }
  if (dice_.OneIn(4)) urls.append(QUrl(QStringLiteral("https://localhost/site.map")));
  data.setUrls(urls);
  Note("drop " + std::to_string(urls.size()) + " files");
  QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window, &enter);
  if (!enter.isAccepted()) return;
  QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window, &drop);
}

void Monkey::Edit() {
  MapWindowWidget* window = AnyMapWindow();
  if (window == nullptr) return;
  Note("edit " + window->TheMap().fileName);
  AddComment(shell_, window->TheMap(), "# " + std::to_string(dice_.Below(1000)));
}

void Monkey::LetOthersWrite() {
  const std::string name = "map" + std::to_string(dice_.Below(8)) + ".map";
  Note("another program writes " + name);
  folder_.Write(name, maps_.Text({}));
  AllowWriting(folder_.Path(name));
}

void Monkey::LetTimePass() {
  Note("a minute passes");
  time_ += std::chrono::seconds(70);
  recovery_->WriteWhatIsDue();
}

std::chrono::milliseconds Monkey::WatchWork() {
  // The keys below make the recovery copies ask for the time.
  if (std::exchange(watching_, true)) return workTime_;
  const QWidgetList all = QApplication::topLevelWidgets();
  for (QWidget* widget : all) {
    auto* box = qobject_cast<ProgressBox*>(widget);
    if (box == nullptr || !box->isVisible() || !dice_.OneIn(3)) continue;
    Note("  cancel \"" + box->windowTitle().toStdString() + "\"");
    QTest::keyClick(box, Qt::Key_Escape);
  }
  if (dice_.OneIn(4)) workTime_ += BusyWork::Patience;
  watching_ = false;
  return workTime_;
}

void Monkey::ChangeWindowState() {
  QWidget* window = AnyWindow();
  if (window == nullptr || qobject_cast<QDialog*>(window) != nullptr) return;
  static constexpr std::array<Qt::WindowState, 4> States{Qt::WindowNoState, Qt::WindowMinimized,
                                                         Qt::WindowMaximized, Qt::WindowFullScreen};
  const Qt::WindowState state = dice_.Of(States);
  Note("window state " + std::to_string(state));
  window->setWindowState(state);
}

void Monkey::AnswerField(QWidget& box) {
  static const std::array<QString, 9> texts{
      QStringLiteral("1px = 2m"), QStringLiteral("Kana25"), QStringLiteral("-2.5"),
      QStringLiteral("45"),       QStringLiteral("Ridge*"), QStringLiteral(""),
      QStringLiteral("nan"),      QStringLiteral("1e-300"), QString(300, QLatin1Char('x'))};
  auto* field = box.findChild<QLineEdit*>();
  if (field != nullptr && !field->isReadOnly()) field->setText(dice_.Of(texts));
}

void Monkey::FillInColumns(SheetDialog& dialog) {
  static constexpr std::array<SheetField, 5> Fields{SheetDate, SheetSpecies, SheetFocal, SheetTime,
                                                    SheetLocation};
  for (size_t i = 0; i < Fields.size(); ++i) {
    dialog.Edit(Fields[i]).setText(QChar::fromLatin1(static_cast<char>('A' + i)));
  }
}

/// A timer does not run again before what it began has ended, but an answer can lead to a box.
void Monkey::timerEvent(QTimerEvent* /*event*/) {
  if (std::exchange(isAnswerDue_, true)) return;
  const auto answer = [this] {
    isAnswerDue_ = false;
    AnswerBox();
  };
  QMetaObject::invokeMethod(this, answer, Qt::QueuedConnection);
}

void Monkey::AnswerBox() {
  if (QWidget* popup = QApplication::activePopupWidget()) {
    popup->close();
    return;
  }
  QWidget* box = QApplication::activeModalWidget();
  // `WatchWork` answers the box of long work.
  if (box == nullptr || !box->isVisible() || qobject_cast<ProgressBox*>(box) != nullptr) return;
  if (++boxSteps_ > FreeAnswers) {
    auto* dialog = qobject_cast<QDialog*>(box);
    ASSERT_NE(dialog, nullptr) << LastEvents();
    ASSERT_LT(boxSteps_, 20 * FreeAnswers) << LastEvents();
    dialog->reject();
    return;
  }
  Note("  box " + Described(*box).toStdString() + " \"" + box->windowTitle().toStdString() + "\"");
  auto* columns = qobject_cast<SheetDialog*>(box);
  if (columns != nullptr && !dice_.OneIn(4)) {
    FillInColumns(*columns);
  } else {
    AnswerField(*box);
  }
  std::vector<QWidget*> controls = ControlsOf(*box);
  const auto buttons = box->findChildren<QAbstractButton*>();
  switch (dice_.Below(6)) {
    case 0:
      QTest::keyClick(box, Qt::Key_Escape);
      break;
    case 1:
      QTest::keyClick(box, Qt::Key_Return);
      break;
    case 2:
      box->close();
      break;
    case 3: {
      QWidget* control = dice_.Of(controls);
      QTest::mouseClick(control, Qt::LeftButton, AnyModifiers(), AnyPointOf(*control));
      break;
    }
    default:
      if (buttons.isEmpty()) break;
      buttons[dice_.Below(static_cast<int>(buttons.size()))]->click();
  }
}

}  // namespace orvane
