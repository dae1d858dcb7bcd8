// KML and GPX are XML whatever the texts of a map hold.

#include "gis/exported_layers.h"

#include <expat.h>
#include <memory>
#include <type_traits>

namespace orvane {
namespace {

/// U+FFFE and U+FFFF, which no XML can hold, and U+FFFD, which it can.
#define NON_CHARACTERS "\xEF\xBF\xBE\xEF\xBF\xBF"
#define REPLACEMENT "\xEF\xBF\xBD"

struct XmlFiles : LayerFiles {
  static void ExpectWellFormed(const std::string& text) {
    struct Free {
      void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, Free> parser(
        XML_ParserCreate(nullptr));
    const auto size = static_cast<int>(text.size());
    EXPECT_EQ(XML_Parse(parser.get(), text.data(), size, 1), XML_STATUS_OK)
        << "line " << XML_GetCurrentLineNumber(parser.get()) << " of\n"
        << text;
    // Not every reader refuses these.
    EXPECT_EQ(text.find("\xEF\xBF\xBE"), text.npos);
    EXPECT_EQ(text.find("\xEF\xBF\xBF"), text.npos);
  }
  std::string Written(Map& map, LayerFormat format) {
    EXPECT_TRUE(ExportTo(map, format, "site").complete);
    return folder.Read("site");
  }
};

TEST_F(XmlFiles, LeaveOutWhatNoXmlCanHold) {
  for (const LayerFormat format : {LayerFormat::Kml, LayerFormat::Gpx}) {
    Map& map = Empty();
    map.smName[0] = "fruit\x02" NON_CHARACTERS;
    Point& camp = Add(map, "Ca\x01mp" NON_CHARACTERS REPLACEMENT, 1, 30, 10);
    camp.note = "a\x1F" NON_CHARACTERS "b <c>";
    Add(map, "\x01\x02", 1, 30.001);
    Trail& trail = AddTrail(map,
                            "Ri\x0B"
                            "dge",
                            {&camp, &Add(map, "Hill", 1.001, 30)}, "Pa\x0C" NON_CHARACTERS "th");
    trail.focalAnimal = NON_CHARACTERS;
    const std::string text = Written(map, format);
    ExpectWellFormed(text);
    ExpectIn(text, "<name>Camp" REPLACEMENT "</name>");
    ExpectIn(text, "ab &lt;c&gt;");
    ExpectIn(text, "<name>Ridge</name>");
    EXPECT_EQ(text.find("<name></name>"), text.npos) << text;
  }
}

TEST_F(XmlFiles, OfGpxHaveNoEmptyNames) {
  Map& map = Empty();
  const auto path = [&] {
    return std::vector<Point*>{&Add(map, "A", 1, 30), &Add(map, "B", 1.001, 30)};
  };
  AddTrail(map, "", path(), "").focalAnimal = "Ana";  // newest first
  AddTrail(map, " ", path(), "Blue").date = PackDate(2003, 3, 14);
  AddTrail(map, "", path(), " ").name.reset();
  const std::string text = Written(map, LayerFormat::Gpx);
  ExpectWellFormed(text);
  ExpectIn(text, "<trk>\n  <trkseg>");
  ExpectIn(text, "<trk>\n  <name>Blue 2003-03-14</name>");
  ExpectIn(text, "<trk>\n  <name>Ana</name>");
}

}  // namespace
}  // namespace orvane
