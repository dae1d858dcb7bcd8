#include "gis/exported_layers.h"

namespace orvane {
namespace {

struct KmlFiles : LayerFiles {
  std::string Kml(const std::string& text) {
    EXPECT_TRUE(ExportTo(Open(text, "dir/my & site.map"), LayerFormat::Kml, "site.kml").complete);
    return folder.Read("site.kml");
  }
};

TEST_F(KmlFiles, HaveTheNameOfTheMapAndFoldersByType) {
  const std::string text = Kml(SiteOfAllLayers);
  ExpectIn(text, "<Document id=\"root_doc\">\n<name>my &amp; site.map</name>\n");
  std::vector<std::string> folders;
  constexpr std::string_view Begin = "<Folder><name>";
  for (size_t at = text.find(Begin); at != text.npos; at = text.find(Begin, at + 1)) {
    const size_t from = at + Begin.size();
    folders.push_back(text.substr(from, text.find('<', from) - from));
  }
  EXPECT_EQ(folders,
            (Texts{"points", "Blue stops", "Red stops", "Path", "Blue", "Red", "Small &amp; wet",
                   "grids", "shades", "ranges", "clusters", "overlaps"}));
  ExpectNoComplaint(Listed("site.kml"));
}

TEST_F(KmlFiles, HaveNamesNotesAndColors) {
  const std::string text = Kml(SiteOfAllLayers);
  ExpectIn(text,
           "<name>Camp</name>\n\t<description>the &quot;camp&quot; &amp; &lt;fire&gt;"
           "</description>");
  ExpectIn(text,
           "<name>Main</name>\n\t<description>the way up</description>\n"
           "\t<Style><LineStyle><color>FF406080</color><width>2</width></LineStyle>");
  ExpectIn(text, "<LineString><tessellate>1</tessellate><coordinates>30,1,10 30.001,1.001,30 ");
  // A filled area and a shaded cell are painted, a hull is an outline.
  ExpectIn(text,
           "<color>FFD0D8B8</color><width>1</width></LineStyle>"
           "<PolyStyle><color>80D0D8B8</color></PolyStyle>");
  ExpectIn(text, "<PolyStyle><color>800000FF</color></PolyStyle>");
  ExpectIn(text,
           "<name>Red group</name>\n\t<Style><LineStyle><color>FF00D0FF</color>"
           "<width>2</width></LineStyle><PolyStyle><fill>0</fill></PolyStyle></Style>");
  ExpectIn(text, "<name>Blue Ana 2001-03-04</name>");
  ExpectIn(text, "<name>Red group 95 %</name>");
  ExpectIn(text, "<SimpleData name=\"timeOfDay\">480</SimpleData>");
}

TEST_F(KmlFiles, KeepATextThatLooksLikeKml) {
  const std::string text = Kml("G\tCamp\tN1\tE30\t\t1\t<Folder><name>x</name> <Document>\n");
  ExpectIn(text, "<description>&lt;Folder&gt;&lt;name&gt;x&lt;/name&gt; &lt;Document&gt;");
  ExpectIn(text, "<Folder><name>points</name>");
}

}  // namespace
}  // namespace orvane
