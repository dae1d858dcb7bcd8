// The platform's own boxes that ask for a file.

#include "shell/files/local_files.h"
#include "shell/files/qt_file_dialogs.h"
#include "support/temporary_folder.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>
#include <QUrl>

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace orvane {
namespace {

class FileBoxes : public testing::Test {
 protected:
  /// Runs `act` on the next box, and then closes it.
  static void WhenShown(std::function<void(QFileDialog&)> act) {
    QTimer::singleShot(0, [act = std::move(act)] {
      auto* box = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      act(*box);
      if (box->isVisible()) box->reject();
    });
  }

  static void Type(QFileDialog& box, const char* name) {
    auto* field = box.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    ASSERT_NE(field, nullptr);
    field->setText(QString::fromUtf8(name));
    static_cast<QDialog&>(box).accept();
  }

  TemporaryFolder folder_;
  QtFileDialogs boxes_;
};

TEST_F(FileBoxes, OpenBeginsInItsFolderAndKeepsWhatWasChosen) {
  folder_.Write("site.map", "");
  FileSpecification file{.directory = folder_.Path(), .type = "map", .name = {}};
  WhenShown([&](QFileDialog& box) {
    EXPECT_EQ(box.windowTitle(), QStringLiteral("Open Map..."));
    EXPECT_EQ(box.directory().absolutePath().toStdString(), folder_.Path());
    EXPECT_EQ(box.fileMode(), QFileDialog::ExistingFile);
    EXPECT_EQ(box.acceptMode(), QFileDialog::AcceptOpen);
    EXPECT_TRUE(box.selectedNameFilter().contains(QStringLiteral("*.map")));
    EXPECT_TRUE(box.nameFilters().contains(QStringLiteral("All files (*)")));
    Type(box, "site.map");
  });
  EXPECT_EQ(boxes_.AskOpen("Open Map...", file), FileAnswer::Chosen);
  EXPECT_EQ(PathOf(file), folder_.Path("site.map"));
  EXPECT_EQ(file.type, "map");
}

TEST_F(FileBoxes, CancelLeavesTheSpecificationAsItWas) {
  FileSpecification file{.directory = folder_.Path(), .type = "map", .name = "old.map"};
  WhenShown([](QFileDialog& box) { box.setDirectory(QStringLiteral("/")); });
  EXPECT_EQ(boxes_.AskOpen("Open Map...", file), FileAnswer::Canceled);
  EXPECT_EQ(PathOf(file), folder_.Path("old.map"));
}

TEST_F(FileBoxes, EachTypeHasItsKindOfFileInFront) {
  struct Kind {
    const char* type;
    const char* pattern;
  };
  for (const Kind& kind : {Kind{"map", "*.map"}, Kind{"txt", "*.gpx"}, Kind{"shp", "*.shp"},
                           Kind{"qch", "*.qch"}, Kind{"png", "*.png"}, Kind{"svg", "*.svg"}}) {
    FileSpecification file{.directory = folder_.Path(), .type = kind.type, .name = {}};
    WhenShown([&](QFileDialog& box) {
      EXPECT_TRUE(box.selectedNameFilter().contains(QLatin1String(kind.pattern))) << kind.type;
    });
    EXPECT_EQ(boxes_.AskOpen("Open", file), FileAnswer::Canceled);
  }
}

TEST_F(FileBoxes, SaveOffersTheNameAndAddsTheEndingThatIsMissing) {
  FileSpecification file{.directory = folder_.Path(), .type = "map", .name = "Untitled"};
  WhenShown([](QFileDialog& box) {
    EXPECT_EQ(box.acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(box.findChild<QLineEdit*>()->text(), QStringLiteral("Untitled"));
    Type(box, "season");
  });
  EXPECT_EQ(boxes_.AskSave("Save untitled map as...", file), FileAnswer::Chosen);
  EXPECT_EQ(PathOf(file), folder_.Path("season.map"));
}

TEST_F(FileBoxes, AnotherKindOfPictureGetsItsOwnEnding) {
  FileSpecification file{.directory = folder_.Path(), .type = "png", .name = "site.png"};
  WhenShown([](QFileDialog& box) {
    for (const QString& filter : box.nameFilters()) {
      if (!filter.contains(QStringLiteral("*.svg"))) continue;
      box.selectNameFilter(filter);
      Q_EMIT box.filterSelected(filter);
    }
    Type(box, "picture");
  });
  EXPECT_EQ(boxes_.AskSave("Save Picture of Map...", file), FileAnswer::Chosen);
  EXPECT_EQ(PathOf(file), folder_.Path("picture.svg"));
}

TEST_F(FileBoxes, AnExistingFileIsReplacedOnlyAfterAQuestion) {
  folder_.Write("site.map", "old");
  FileSpecification file{.directory = folder_.Path(), .type = "map", .name = "site.map"};
  bool asked = false;
  WhenShown([&](QFileDialog& box) {
    QTimer::singleShot(0, [&asked] {
      auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(question, nullptr);
      asked = true;
      question->done(QMessageBox::No);
    });
    static_cast<QDialog&>(box).accept();
    EXPECT_TRUE(box.isVisible());
  });
  EXPECT_EQ(boxes_.AskSave("Save site.map as...", file), FileAnswer::Canceled);
  EXPECT_TRUE(asked);
}

TEST_F(FileBoxes, ALatin1NameThatIsLeftAsOfferedKeepsItsBytes) {
  const std::string name = "R\xEDo.map";
  FileSpecification file{.directory = folder_.Path(), .type = "map", .name = name};
  WhenShown([](QFileDialog& box) {
    EXPECT_EQ(box.findChild<QLineEdit*>()->text(), QString::fromUtf8("Río.map"));
    static_cast<QDialog&>(box).accept();
  });
  EXPECT_EQ(boxes_.AskSave("Save as...", file), FileAnswer::Chosen);
  EXPECT_EQ(PathOf(file), folder_.Path(name));
  WhenShown([](QFileDialog& box) { Type(box, "Río Grande.map"); });
  EXPECT_EQ(boxes_.AskSave("Save as...", file), FileAnswer::Chosen);
  EXPECT_EQ(PathOf(file), folder_.Path("Río Grande.map"));
}

/// A map in a folder, both with names in Latin-1.
class Latin1FileBoxes : public FileBoxes {
 protected:
  Latin1FileBoxes() {
    std::filesystem::create_directory(field_);
    folder_.Write(
        "F\xED"
        "eld/R\xEDo.map",
        "");
  }

  /// Presses the default button of the next question. `asked` counts it.
  static void AnswerNo(int& asked) {
    QTimer::singleShot(0, [&asked] {
      auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(question, nullptr);
      EXPECT_EQ(question->text(), QString::fromUtf8("Río.map already exists.\n"
                                                    "Do you want to replace it?"));
      ++asked;
      question->defaultButton()->click();
    });
  }

  std::string field_ = folder_.Path(
      "F\xED"
      "eld");
};

// The box began in the parent folder, and Return wrote the map there.
TEST_F(Latin1FileBoxes, AFolderInLatin1IsWhereTheBoxBeginsAndEnds) {
  for (const char* name : {"in.map", "R\xEDo.map"}) {
    FileSpecification file{.directory = field_, .type = "map", .name = name};
    WhenShown([](QFileDialog& box) {
      EXPECT_EQ(box.directory().dirName(), QString::fromUtf8("Fíeld"));
      QTimer::singleShot(0, [] {
        if (auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
          question->button(QMessageBox::Yes)->click();
        }
      });
      static_cast<QDialog&>(box).accept();
    });
    EXPECT_EQ(boxes_.AskSave("Save as...", file), FileAnswer::Chosen);
    EXPECT_EQ(PathOf(file), field_ + "/" + name);
  }
  FileSpecification file{.directory = field_, .type = "map", .name = "in.map"};
  WhenShown([](QFileDialog& box) { Type(box, "other.map"); });
  EXPECT_EQ(boxes_.AskSave("Save as...", file), FileAnswer::Chosen);
  EXPECT_EQ(PathOf(file), field_ + "/other.map");
}

TEST_F(Latin1FileBoxes, TheParentOfAFolderInLatin1IsItsOwn) {
  FileSpecification file{.directory = field_, .type = "map", .name = "in.map"};
  WhenShown([&](QFileDialog& box) {
    box.findChild<QAbstractButton*>(QStringLiteral("toParentButton"))->click();
    EXPECT_EQ(box.directory().absolutePath().toStdString(), folder_.Path());
    Type(box, "above.map");
  });
  EXPECT_EQ(boxes_.AskSave("Save as...", file), FileAnswer::Chosen);
  EXPECT_EQ(PathOf(file), folder_.Path("above.map"));
}

TEST_F(Latin1FileBoxes, LeavesNoLinkBehind) {
  QString link;
  FileSpecification file{.directory = field_, .type = "map", .name = {}};
  WhenShown([&](QFileDialog& box) {
    link = box.directory().absolutePath();
    EXPECT_TRUE(QFileInfo(link).isSymLink());
  });
  EXPECT_EQ(boxes_.AskOpen("Open", file), FileAnswer::Canceled);
  EXPECT_FALSE(QFileInfo::exists(QFileInfo(link).absolutePath()));
  EXPECT_TRUE(std::filesystem::exists(field_ + "/R\xEDo.map"));
}

// The box said that there is no such file.
TEST_F(Latin1FileBoxes, ATypedNameOpensTheFileThatHasItInLatin1) {
  folder_.Write("R\xEDo.map", "");
  for (const std::string& folder : {folder_.Path(), field_}) {
    FileSpecification file{.directory = folder, .type = "map", .name = {}};
    WhenShown([](QFileDialog& box) { Type(box, "Río.map"); });
    EXPECT_EQ(boxes_.AskOpen("Open", file), FileAnswer::Chosen);
    EXPECT_EQ(PathOf(file), folder + "/R\xEDo.map");
  }
}

TEST_F(Latin1FileBoxes, ATypedFolderInLatin1IsEntered) {
  FileSpecification file{.directory = folder_.Path(), .type = "map", .name = {}};
  WhenShown([](QFileDialog& box) {
    Type(box, "Fíeld");
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(box.directory().dirName(), QString::fromUtf8("Fíeld"));
    Type(box, "Río.map");
  });
  EXPECT_EQ(boxes_.AskOpen("Open", file), FileAnswer::Chosen);
  EXPECT_EQ(PathOf(file), field_ + "/R\xEDo.map");
}

TEST_F(Latin1FileBoxes, AFileInLatin1IsReplacedOnlyAfterAQuestion) {
  int asked = 0;
  for (const char* offered : {"R\xEDo.map", "in.map"}) {
    FileSpecification file{.directory = field_, .type = "map", .name = offered};
    WhenShown([&asked](QFileDialog& box) {
      AnswerNo(asked);
      Type(box, "Río.map");
      EXPECT_TRUE(box.isVisible());
    });
    EXPECT_EQ(boxes_.AskSave("Save as...", file), FileAnswer::Canceled);
  }
  EXPECT_EQ(asked, 2);
}

TEST(LocalFiles, EachNameOfAPathIsShownInItsOwnEncoding) {
  EXPECT_EQ(LocalFileName("/home/Jos\xC3\xA9/R\xEDo.map"), QString::fromUtf8("/home/José/Río.map"));
  EXPECT_EQ(LocalFileName("site.map"), QStringLiteral("site.map"));
  EXPECT_EQ(LocalFileName("/"), QStringLiteral("/"));
  EXPECT_EQ(LocalFileName(""), QString());
}

TEST(LocalFiles, ATypedPathHasTheBytesThatAreOnTheDisk) {
  const TemporaryFolder folder;
  const std::string latin1 = folder.Path(
      "F\xED"
      "eld");
  std::filesystem::create_directory(latin1);
  folder.Write(
      "F\xED"
      "eld/a.map",
      "");
  const auto typed = [&](const char* name) {
    return ExistingPath({}, QString::fromStdString(folder.Path(name)));
  };
  EXPECT_EQ(typed("Fíeld/a.map"), latin1 + "/a.map");
  EXPECT_EQ(typed("Fíeld/río.map"), latin1 + "/río.map");
  EXPECT_EQ(typed("Río/a.map"), folder.Path("Río/a.map"));
  EXPECT_EQ(ExistingPath(folder.Path(), QString::fromUtf8("Fíeld")), latin1);
  std::filesystem::create_directory(folder.Path("Fíeld"));
  EXPECT_EQ(typed("Fíeld/a.map"), folder.Path("Fíeld/a.map"));
}

TEST(LocalFiles, ADroppedFileKeepsTheBytesOfItsName) {
  for (const std::string path : {"/home/R\xEDo 100%.map", "/home/R\xC3\xADo.map", "/a b#c?.map"}) {
    const QByteArray bytes(path.data(), static_cast<qsizetype>(path.size()));
    QMimeData data;
    data.setUrls({QUrl::fromEncoded("file://" + bytes.toPercentEncoding("/"))});
    EXPECT_TRUE(HasLocalFiles(data));
    EXPECT_EQ(LocalFilesOf(data), std::vector<std::string>{path});
  }
}

}  // namespace
}  // namespace orvane
