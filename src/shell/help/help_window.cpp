#include "shell/help/help_window.h"

#include "shell/help/help_file.h"
#include "shell/window_keys.h"

#include <QAction>
#include <QEvent>
#include <QFileInfo>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QHelpSearchEngine>
#include <QHelpSearchQueryWidget>
#include <QHelpSearchResultWidget>
#include <QImage>
#include <QLineEdit>
#include <QSplitter>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QTextBrowser>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace orvane {
namespace {

/// A text browser that loads pages and pictures only from the help file.
class PageBrowser final : public QTextBrowser {
 public:
  PageBrowser(const QHelpEngine& engine, QWidget* parent) : QTextBrowser(parent), engine_(engine) {}

  QVariant loadResource(int type, const QUrl& name) override {
    const QUrl url = name.isRelative() ? source().resolved(name) : name;
    if (url.scheme() != QLatin1String("qthelp")) return {};
    const QByteArray bytes = engine_.fileData(url);
    if (type != QTextDocument::ImageResource) return QString::fromUtf8(bytes);
    // A picture that is too wide would need a scroll bar.
    const QImage image = QImage::fromData(bytes);
    const int room = std::max(300, viewport()->width() - 40);
    return image.width() > room ? image.scaledToWidth(room, Qt::SmoothTransformation) : image;
  }

 private:
  const QHelpEngine& engine_;
};

/// Names for screen readers: the buttons of the search have only pictures.
void NameSearch(QHelpSearchQueryWidget& query, QHelpSearchResultWidget& results) {
  query.setAccessibleName(QStringLiteral("Words to search for"));
  if (auto* words = query.findChild<QLineEdit*>()) words->setAccessibleName(query.accessibleName());
  const auto searches = query.findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
  for (QToolButton* button : searches) button->setAccessibleName(button->toolTip());
  results.setAccessibleName(QStringLiteral("Pages found"));
  if (auto* list = results.findChild<QTextBrowser*>()) {
    list->setAccessibleName(results.accessibleName());
  }
  const QStringList pages = {QStringLiteral("First results"), QStringLiteral("Previous results"),
                             QStringLiteral("More results"), QStringLiteral("Last results")};
  const auto turns = results.findChildren<QToolButton*>();
  for (qsizetype i = 0; i < std::min(turns.size(), pages.size()); ++i) {
    turns[i]->setAccessibleName(pages[i]);
  }
}

}  // namespace

HelpWindow::HelpWindow(const QString& helpFile, QWidget* parent)
    : QMainWindow(parent, Qt::Window), engine_(nullptr) {
  setObjectName(QStringLiteral("helpWindow"));
  setWindowTitle(QStringLiteral("Help"));
  OpenFile(helpFile);

  auto* split = new QSplitter(this);
  tabs_ = new QTabWidget(split);
  tabs_->setObjectName(QStringLiteral("helpTabs"));
  tabs_->setAccessibleName(QStringLiteral("Contents, index and search"));
  text_ = new PageBrowser(*engine_, split);
  text_->setObjectName(QStringLiteral("helpPage"));
  text_->setAccessibleName(QStringLiteral("Help page"));
  text_->document()->setDocumentMargin(12);

  QHelpContentWidget* contents = engine_->contentWidget();
  contents->setObjectName(QStringLiteral("helpContents"));
  contents->setAccessibleName(QStringLiteral("Contents"));
  connect(contents, &QHelpContentWidget::linkActivated, this, &HelpWindow::ShowUrl);
  connect(contents, &QHelpContentWidget::clicked, this, [this, contents](const QModelIndex& row) {
    Q_EMIT contents->activated(row);
    text_->setFocus();
  });
  tabs_->addTab(contents, QStringLiteral("&Contents"));
  tabs_->addTab(MakeIndex(), QStringLiteral("&Index"));
  tabs_->addTab(MakeSearch(), QStringLiteral("&Search"));
  tabs_->tabBar()->installEventFilter(this);
  connect(tabs_, &QTabWidget::tabBarClicked, this, &HelpWindow::FocusTabLater);

  split->addWidget(tabs_);
  split->addWidget(text_);
  split->setStretchFactor(1, 1);
  split->setSizes({270, 680});
  setCentralWidget(split);
  MakeToolBar();
  resize(950, 700);
  AddWindowKeys(*this, [this] { Q_EMIT exitRequested(); });
}

HelpWindow::~HelpWindow() = default;

void HelpWindow::OpenFile(const QString& helpFile) {
  engine_ = std::make_unique<QHelpEngine>(folder_.filePath(QStringLiteral("Orvane.qhc")));
  engine_->setReadOnly(false);
  engine_->setupData();
  // The engine would look for a relative path beside its own files.
  engine_->registerDocumentation(QFileInfo(helpFile).absoluteFilePath());
  engine_->setupData();  // reads contents and index of the file
}

void HelpWindow::MakeToolBar() {
  QToolBar* bar = addToolBar(QStringLiteral("Pages"));
  bar->setObjectName(QStringLiteral("helpBar"));
  bar->setMovable(false);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  const auto add = [&](QStyle::StandardPixmap icon, const QString& text, const QKeySequence& key) {
    QAction* action = bar->addAction(style()->standardIcon(icon), text);
    action->setShortcut(key);
    return action;
  };
  QAction* back = add(QStyle::SP_ArrowBack, QStringLiteral("Back"), QKeySequence::Back);
  QAction* forward = add(QStyle::SP_ArrowForward, QStringLiteral("Forward"), QKeySequence::Forward);
  QAction* home = add(QStyle::SP_DirHomeIcon, QStringLiteral("All Chapters"), {});
  back->setEnabled(false);
  forward->setEnabled(false);
  connect(back, &QAction::triggered, text_, &QTextBrowser::backward);
  connect(forward, &QAction::triggered, text_, &QTextBrowser::forward);
  connect(home, &QAction::triggered, this, [this] { ShowPage("README.html"); });
  connect(text_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
  connect(text_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
}

QWidget* HelpWindow::MakeIndex() {
  auto* page = new QWidget(tabs_);
  auto* layout = new QVBoxLayout(page);
  auto* word = new QLineEdit(page);
  word->setObjectName(QStringLiteral("helpWord"));
  word->setAccessibleName(QStringLiteral("Word in the index"));
  word->setPlaceholderText(QStringLiteral("Look for a word"));
  word->setClearButtonEnabled(true);
  QHelpIndexWidget* index = engine_->indexWidget();
  index->setObjectName(QStringLiteral("helpIndex"));
  index->setAccessibleName(QStringLiteral("Index"));
  layout->addWidget(word);
  layout->addWidget(index);
  connect(word, &QLineEdit::textChanged, index,
          [index](const QString& text) { index->filterIndices(text); });
  connect(word, &QLineEdit::returnPressed, index, &QHelpIndexWidget::activateCurrentItem);
  connect(index, &QHelpIndexWidget::documentActivated, this,
          [this](const QHelpLink& link) { ShowUrl(link.url); });
  // A word with several pages opens the first. The title of each chapter is in the index.
  connect(index, &QHelpIndexWidget::documentsActivated, this,
          [this](const QList<QHelpLink>& links) { ShowUrl(links.front().url); });
  return page;
}

QWidget* HelpWindow::MakeSearch() {
  auto* page = new QWidget(tabs_);
  auto* layout = new QVBoxLayout(page);
  QHelpSearchEngine* search = engine_->searchEngine();
  QHelpSearchQueryWidget* query = search->queryWidget();
  QHelpSearchResultWidget* results = search->resultWidget();
  query->setObjectName(QStringLiteral("helpQuery"));
  results->setObjectName(QStringLiteral("helpResults"));
  NameSearch(*query, *results);
  layout->addWidget(query);
  layout->addWidget(results, 1);
  connect(query, &QHelpSearchQueryWidget::search, this,
          [search, query] { search->search(query->searchInput()); });
  connect(results, &QHelpSearchResultWidget::requestShowLink, this, &HelpWindow::ShowUrl);
  // Until the pages are indexed the field takes no focus.
  connect(search, &QHelpSearchEngine::indexingFinished, this, [this] {
    if (focusDue_) FocusTab();
  });
  search->reindexDocumentation();
  return page;
}

bool HelpWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == tabs_->tabBar() && event->type() == QEvent::Shortcut) FocusTabLater();
  return QMainWindow::eventFilter(watched, event);
}

void HelpWindow::FocusTabLater() {
  QMetaObject::invokeMethod(this, &HelpWindow::FocusTab, Qt::QueuedConnection);
}

void HelpWindow::FocusTab() {
  QWidget* page = tabs_->currentWidget();
  QWidget* target = page->findChild<QLineEdit*>();
  if (target == nullptr) target = page;
  focusDue_ = !target->isEnabled();
  target->setFocus(Qt::ShortcutFocusReason);
}

void HelpWindow::ShowPage(std::string_view page) {
  ShowUrl(QUrl(QStringLiteral("qthelp://%1/orvane/guide/%2")
                   .arg(QLatin1String(HelpNamespace),
                        QLatin1String(page.data(), static_cast<qsizetype>(page.size())))));
}

void HelpWindow::ShowUrl(const QUrl& url) {
  if (url.isValid()) text_->setSource(url);
}

QUrl HelpWindow::ShownPage() const { return text_->source(); }

}  // namespace orvane
