// The type of map files, as a program asks the platform for it. The description is read by Qt's own
// reader of such files, so nothing needs to be installed.

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMimeDatabase>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

constexpr auto OurType = "application/x-orvane-map";

class MimeType : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    // Both must be set before the first look at the types.
    static const QTemporaryDir data;
    const QDir packages(data.filePath(QStringLiteral("mime/packages")));
    ASSERT_TRUE(packages.mkpath(QStringLiteral(".")));
    ASSERT_TRUE(
        QFile::copy(QStringLiteral(MIME_FILE), packages.filePath(QStringLiteral("orvane.xml"))));
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    // Beside what the machine knows itself, if it knows anything.
    qputenv("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
  }

  static QByteArray OfName(const char* name) {
    return QMimeDatabase()
        .mimeTypeForFile(QString::fromLatin1(name), QMimeDatabase::MatchExtension)
        .name()
        .toLatin1();
  }

  static QByteArray OfContents(const QByteArray& contents) {
    return QMimeDatabase().mimeTypeForData(contents).name().toLatin1();
  }
};

TEST_F(MimeType, IsThatOfTheEndingMap) {
  EXPECT_EQ(OfName("site.map"), OurType);
  EXPECT_NE(OfName("site.txt"), OurType);
}

TEST_F(MimeType, IsAKindOfText) {
  const QMimeType type = QMimeDatabase().mimeTypeForName(QString::fromLatin1(OurType));
  ASSERT_TRUE(type.isValid());
  EXPECT_TRUE(type.inherits(QStringLiteral("text/plain")));
  EXPECT_EQ(type.comment(), QStringLiteral("Orvane map"));
}

TEST_F(MimeType, LeavesSourceMapsToTheirOwner) {
  EXPECT_EQ(OfName("page.js.map"), "application/json");
  EXPECT_EQ(OfName("page.css.map"), "application/json");
}

TEST_F(MimeType, IsFoundFromTheContentOfTheExamples) {
  for (const char* name : {"trails.map", "season.map", "rains.map"}) {
    QFile file(QStringLiteral(EXAMPLES "/") + QString::fromLatin1(name));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(OfContents(file.readAll()), OurType) << name;
  }
}

TEST_F(MimeType, IsFoundFromAFirstTrail) {
  EXPECT_EQ(OfContents("T\tRidge\tTrail\nG\tCamp\tN1\tE10\n"), OurType);
}

TEST_F(MimeType, IsNotFoundForOtherFilesOfThatEnding) {
  EXPECT_NE(OfContents("{\"version\":3,\"sources\":[\"a.ts\"],\"mappings\":\"AAAA\"}"), OurType);
  EXPECT_NE(OfContents("Archive member included\n\nMemory Configuration\n\n.text\t0x00401000\n"),
            OurType);
  EXPECT_NE(OfContents("0000000000001139 T main\n0000000000004010 B __bss_start\n"), OurType);
  EXPECT_NE(OfContents("{\n\"classname\" \"worldspawn\"\n( 0 0 0 ) ( 1 0 0 )\n}\n"), OurType);
  EXPECT_NE(OfContents("MAP\n  NAME \"site\"\n  LAYER\n\tTYPE LINE\n  END\nEND\n"), OurType);
  EXPECT_NE(OfContents("T\ttable of two columns\nU\tthat is no survey\n"), OurType);
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
