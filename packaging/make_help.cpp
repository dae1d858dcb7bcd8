// make_help GUIDE PICTURES OUT: turns the guide into the pages of the help file, in the build.
//
// Each chapter of GUIDE, in Markdown, becomes a page OUT/guide/<chapter>.html, with an anchor at each
// heading for the links of the guide. The pictures that it shows are copied to OUT/pictures.
// OUT/Orvane.qhp lists pages, contents and index for the help generator: the contents follow the list
// of chapters in the guide's README.md, and each heading is an entry of the index.

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTextDocument>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

struct Heading {
  int level;
  QString text;
  QString anchor;
};

struct Chapter {
  QString name;  ///< of its file, without the ending
  QString text;
  QList<Heading> headings;
};

[[noreturn]] void Fail(const QString& text) {
  std::fprintf(stderr, "make_help: %s\n", qPrintable(text));
  std::exit(1);
}

QString ReadText(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) Fail(QStringLiteral("cannot read ") + path);
  return QString::fromUtf8(file.readAll());
}

void WriteText(const QString& path, const QString& text) {
  QFile file(path);
  const QByteArray bytes = text.toUtf8();
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
    Fail(QStringLiteral("cannot write ") + path);
  }
}

/// The anchor of a heading, as in links of the guide: lower case, blanks as hyphens, without other
/// signs.
QString AnchorOf(const QString& heading) {
  QString anchor;
  for (const QChar letter : heading.toLower()) {
    if (letter.isLetterOrNumber() || letter == u'_' || letter == u'-') {
      anchor += letter;
    } else if (letter == u' ') {
      anchor += u'-';
    }
  }
  return anchor;
}

/// The headings of a text in Markdown, from top to bottom.
QList<Heading> HeadingsOf(const QString& text) {
  QList<Heading> headings;
  bool inExample = false;
  const QStringList lines = text.split(u'\n');
  for (const QString& line : lines) {
    if (line.startsWith(QStringLiteral("```"))) inExample = !inExample;
    if (inExample || !line.startsWith(u'#')) continue;
    int level = 0;
    while (level < line.size() && line[level] == u'#') ++level;
    QString heading = line.mid(level).trimmed();
    heading.remove(u'`').remove(QStringLiteral("**"));
    headings.append({level, heading, AnchorOf(heading)});
  }
  return headings;
}

/// Makes links to chapters lead to pages of the help. Links out of the guide become plain text, because
/// the help does not have their targets.
QString WithLinksOfPages(QString html) {
  static const QRegularExpression chapter(QStringLiteral("href=\"([\\w-]+)\\.md(#[^\"]*)?\""));
  html.replace(chapter, QStringLiteral("href=\"\\1.html\\2\""));
  static const QRegularExpression outside(QStringLiteral("<a href=\"\\.\\./[^\"]*\">(.*?)</a>"),
                                          QRegularExpression::DotMatchesEverythingOption);
  static const QRegularExpression style(QStringLiteral("<span[^>]*>|</span>"));
  qsizetype from = 0;
  for (QRegularExpressionMatch found = outside.match(html, from); found.hasMatch();
       found = outside.match(html, from)) {
    const QString plain = found.captured(1).remove(style);
    html.replace(found.capturedStart(), found.capturedLength(), plain);
    from = found.capturedStart() + plain.size();
  }
  return html;
}

/// Removes fonts and colours, so that the page is readable in a dark theme too, and gives headings,
/// examples and tables room.
QString WithPlainLook(QString html) {
  struct Change {
    QRegularExpression from;
    QString to;
  };
  static const std::array<Change, 5> changes{{
      {QRegularExpression(QStringLiteral("<body[^>]*>")), QStringLiteral("<body>")},
      {QRegularExpression(QStringLiteral(" color:#0000ff;")), QString()},
      {QRegularExpression(QStringLiteral("<(h[1-6]) style=\"[^\"]*\"")), QStringLiteral("<\\1")},
      {QRegularExpression(QStringLiteral("<pre style=\"[^\"]*\"")),
       QStringLiteral("<pre style=\"margin-top:0px; margin-bottom:0px; margin-left:20px;\"")},
      {QRegularExpression(QStringLiteral("<table border=\"1\" cellspacing=\"2\">")),
       QStringLiteral("<table border=\"1\" cellspacing=\"0\" cellpadding=\"5\" "
                      "style=\"border-collapse:collapse; border-color:#999999;\">")},
  }};
  for (const Change& change : changes) html.replace(change.from, change.to);
  return html;
}

/// One chapter as a page.
QString PageOf(const Chapter& chapter) {
  QTextDocument document;
  document.setMarkdown(chapter.text, QTextDocument::MarkdownDialectGitHub);
  QString html = WithPlainLook(WithLinksOfPages(document.toHtml()));
  // The headings come in the order of the text.
  static const QRegularExpression opening(QStringLiteral("<h[1-6][^>]*>"));
  qsizetype from = 0;
  for (const Heading& heading : chapter.headings) {
    const QRegularExpressionMatch found = opening.match(html, from);
    if (!found.hasMatch()) Fail(QStringLiteral("no heading in the page of ") + chapter.name);
    const QString anchor = QStringLiteral("<a name=\"%1\"></a>").arg(heading.anchor);
    html.insert(found.capturedEnd(), anchor);
    from = found.capturedEnd() + anchor.size();
  }
  const QString title =
      QStringLiteral("<head><title>%1</title>").arg(chapter.headings.front().text.toHtmlEscaped());
  return html.replace(QStringLiteral("<head>"), title);
}

/// The chapters in the order of the guide's list, after the page with that list.
QList<Chapter> ReadGuide(const QDir& guide) {
  QStringList names{QStringLiteral("README")};
  const QString list = ReadText(guide.filePath(QStringLiteral("README.md")));
  static const QRegularExpression entry(QStringLiteral("^- \\[[^\\]]*\\]\\(([\\w-]+)\\.md\\)"),
                                        QRegularExpression::MultilineOption);
  for (auto found = entry.globalMatch(list); found.hasNext();) {
    names.append(found.next().captured(1));
  }
  const QStringList files = guide.entryList({QStringLiteral("*.md")}, QDir::Files);
  for (const QString& file : files) {
    if (!names.contains(QFileInfo(file).completeBaseName())) {
      Fail(file + QStringLiteral(" is not in the list of chapters"));
    }
  }
  QList<Chapter> chapters;
  for (const QString& name : names) {
    const QString text = ReadText(guide.filePath(name + QStringLiteral(".md")));
    chapters.append({name, text, HeadingsOf(text)});
    if (chapters.back().headings.isEmpty()) Fail(name + QStringLiteral(" has no heading"));
  }
  return chapters;
}

/// Fails if a link leads to a page or heading that does not exist.
void CheckLinks(const QList<Chapter>& chapters) {
  QSet<QString> targets;
  for (const Chapter& chapter : chapters) {
    targets.insert(chapter.name + QStringLiteral(".md"));
    for (const Heading& heading : chapter.headings) {
      targets.insert(chapter.name + QStringLiteral(".md#") + heading.anchor);
    }
  }
  static const QRegularExpression link(QStringLiteral("\\]\\(([\\w-]*\\.md)?(#[^)]*)?\\)"));
  for (const Chapter& chapter : chapters) {
    for (auto found = link.globalMatch(chapter.text); found.hasNext();) {
      const QRegularExpressionMatch match = found.next();
      const QString file =
          match.captured(1).isEmpty() ? chapter.name + QStringLiteral(".md") : match.captured(1);
      const QString target = file + match.captured(2);
      if (!targets.contains(target)) {
        Fail(QStringLiteral("%1.md leads to %2, which is not there").arg(chapter.name, target));
      }
    }
  }
}

QString SectionOf(const Chapter& chapter) {
  const QString page = QStringLiteral("guide/") + chapter.name + QStringLiteral(".html");
  QString text = QStringLiteral("      <section title=\"%1\" ref=\"%2\">\n")
                     .arg(chapter.headings.front().text.toHtmlEscaped(), page);
  for (const Heading& heading : chapter.headings.mid(1)) {
    if (heading.level != 2) continue;
    text += QStringLiteral("        <section title=\"%1\" ref=\"%2#%3\"/>\n")
                .arg(heading.text.toHtmlEscaped(), page, heading.anchor);
  }
  return text + QStringLiteral("      </section>\n");
}

QString ProjectOf(const QList<Chapter>& chapters, const QStringList& pictures) {
  QString sections;
  QString keywords;
  QString files;
  for (const Chapter& chapter : chapters) {
    sections += SectionOf(chapter);
    const QString page = QStringLiteral("guide/") + chapter.name + QStringLiteral(".html");
    for (const Heading& heading : chapter.headings) {
      keywords += QStringLiteral("      <keyword name=\"%1\" ref=\"%2#%3\"/>\n")
                      .arg(heading.text.toHtmlEscaped(), page, heading.anchor);
    }
    files += QStringLiteral("      <file>%1</file>\n").arg(page);
  }
  for (const QString& picture : pictures) {
    files += QStringLiteral("      <file>pictures/%1</file>\n").arg(picture);
  }
  return QStringLiteral(
             "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
             "<QtHelpProject version=\"1.0\">\n"
             "  <namespace>orvane.guide</namespace>\n"
             "  <virtualFolder>orvane</virtualFolder>\n"
             "  <filterSection>\n"
             "    <toc>\n%1    </toc>\n"
             "    <keywords>\n%2    </keywords>\n"
             "    <files>\n%3    </files>\n"
             "  </filterSection>\n"
             "</QtHelpProject>\n")
      .arg(sections, keywords, files);
}

/// Copies the pictures that the chapters show.
/// \return their names
QStringList CopyPictures(const QList<Chapter>& chapters, const QDir& from, const QDir& to) {
  QStringList names;
  static const QRegularExpression shown(QStringLiteral("\\]\\(\\.\\./pictures/([\\w.-]+)\\)"));
  for (const Chapter& chapter : chapters) {
    for (auto found = shown.globalMatch(chapter.text); found.hasNext();) {
      const QString name = found.next().captured(1);
      if (names.contains(name)) continue;
      names.append(name);
      QFile::remove(to.filePath(name));
      if (!QFile::copy(from.filePath(name), to.filePath(name))) {
        Fail(QStringLiteral("cannot copy the picture ") + name);
      }
    }
  }
  return names;
}

}  // namespace

int main(int argc, char** argv) {
  // A document asks for fonts, which need an application, but no screen.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  if (argc != 4) Fail(QStringLiteral("usage: make_help GUIDE PICTURES OUT"));
  const QDir out(QString::fromLocal8Bit(argv[3]));
  if (!out.mkpath(QStringLiteral("guide")) || !out.mkpath(QStringLiteral("pictures"))) {
    Fail(QStringLiteral("cannot make ") + out.path());
  }
  const QList<Chapter> chapters = ReadGuide(QDir(QString::fromLocal8Bit(argv[1])));
  CheckLinks(chapters);
  for (const Chapter& chapter : chapters) {
    WriteText(out.filePath(QStringLiteral("guide/%1.html").arg(chapter.name)), PageOf(chapter));
  }
  const QStringList pictures = CopyPictures(chapters, QDir(QString::fromLocal8Bit(argv[2])),
                                            QDir(out.filePath(QStringLiteral("pictures"))));
  WriteText(out.filePath(QStringLiteral("Orvane.qhp")), ProjectOf(chapters, pictures));
  return 0;
}
