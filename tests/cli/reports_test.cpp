// What the commands that print a report or a picture of a map say about a site that has everything.

#include "command_line.h"
#include "rich_site.h"

namespace orvane {
namespace {

struct RichSiteCommands : CommandLine {
  RichSiteCommands() { folder.Write("rich.map", RichSite); }

  /// Runs a command that must succeed with no message but that on the point without a place.
  std::string Print(std::vector<std::string> arguments) {
    const Outcome run = Do(arguments);
    EXPECT_EQ(run.status, 0) << arguments[0];
    EXPECT_EQ(run.err, "warning: No position found for point Dell\n") << arguments[0];
    return run.out;
  }
  void ExpectCannotFind(const std::vector<std::string>& arguments, const std::string& name) {
    const Outcome run = Do(arguments);
    EXPECT_EQ(run.status, 1) << arguments[0];
    EXPECT_EQ(run.out, "") << arguments[0];
    EXPECT_NE(run.err.find("error: Can't find " + name + "\n"), std::string::npos) << run.err;
  }
};

void ExpectParts(const std::string& text, const std::vector<std::string>& parts) {
  for (const std::string& part : parts) {
    EXPECT_NE(text.find(part), std::string::npos) << part << "\nis missing in\n" << text;
  }
}

TEST_F(RichSiteCommands, DumpHasTheSettingsAndEveryKindOfReading) {
  ExpectParts(
      Print({"dump", "rich.map"}),
      {R"("magneticDeviation": -2.5, "hasDeviation": true, "origin": 0)",
       R"("contourEnabled": 1, "contourInterval": 10, "smName": ["fruit","leaf","rest"])",
       R"("comments": ["# A site."], "credits": ["© Field Office"])",
       R"({"name":"Camp","synonyms":["Base"],"map":"rich.map","trail":)",
       R"([{"kind":"gps","lat":0.0,"lon":0.01,"altitude":30.0,"count":1}])",
       R"([{"kind":"compass","base":0,"bearing":90.0,"distance":100.0,"inclination":5.0,)",
       R"({"kind":"altitude","altitude":25.0,"count":1},{"kind":"near","nearName":"Camp"})"});
}

TEST_F(RichSiteCommands, EstimatesTakesTheLimitsOfItsOptions) {
  const std::string usual = Print({"estimates", "rich.map"});
  EXPECT_EQ(Print({"estimates", "rich.map", "--bandwidth-factor", "1", "--seed", "1"}), usual);
  for (const char* factor : {"0.1", "2"}) {
    EXPECT_NE(Print({"estimates", "rich.map", "--bandwidth-factor", factor}), usual);
  }
  for (const char* seed : {"0", "18446744073709551615"})
    Print({"estimates", "rich.map", "--seed", seed});
  ExpectCannotFind({"estimates", "rich.map", "--range", "Elsewhere"}, "Elsewhere");
}

TEST_F(RichSiteCommands, ResidualsPrintsTheWorst) {
  const std::string all = Print({"residuals", "rich.map"});
  EXPECT_NE(all.find("\"kind\":\"compass\",\"base\":0"), std::string::npos);
  EXPECT_EQ(Print({"residuals", "rich.map", "--worst", "0"}),
            "{\"readings\": [], \"chains\": []}\n");
  // A number beyond 64 bits is more than there are.
  EXPECT_EQ(Print({"residuals", "rich.map", "--worst", "99999999999999999999999"}).size(),
            all.size());
}

TEST_F(RichSiteCommands, DumpHasGridsShadesAndFollows) {
  ExpectParts(
      Print({"dump", "rich.map"}),
      {R"("cellSize":100,"rows":10,"columns":10,"angle":15.0,"rowStyle":5,"rowStart":1)",
       R"({"grid":0,"row":0,"column":1,"color":16711680,"value":45.0})",
       R"({"name":null,"type":"Oru","focalAnimal":"Ulo","date":38843,"width":0.0,"groupSize":4)",
       R"("timeOfDay":540,"duration":10,"sm":[1,2,0])"});
}

TEST_F(RichSiteCommands, DumpHasTheAnalysisOfTheRanges) {
  // The hulls are boxes; the overlap is 0.002 by 0.003 degrees.
  ExpectParts(
      Print({"dump", "rich.map"}),
      {R"("keys":[{"type":"Oru","focalAnimal":null,"timeFrom":480,"timeTo":750)",
       R"("bounds":[0.003,0.003,0.008,0.008],"hull":[11,10,13,12],"mcpArea":308691.)",
       R"("tally":[120,4,6,0],"points":[13,12,11,10],"follows":[3],"totalMinutes":120)",
       R"("rangeA":0,"rangeB":1,"area":74085.)", R"("tallyA":[30,1,2,0],"tallyB":[10,1,1,0])",
       R"("timeShareA":25.0,"timeShareB":25.0)"});
}

TEST_F(RichSiteCommands, TrailsPrintsAllTrailsOrThoseThatAreNamed) {
  const std::string all = Print({"trails", "rich.map"});
  ExpectParts(all, {"\nPlot\t4.44km\t4.45km\t10m\t80m\t1.23km^2\t1.23km^2\t112°\t114°\t3°\n",
                    "\nMain\t2.42km\t", "Total closed trails:\t1\n"});
  const std::string one = Print({"trails", "rich.map", "--trail", "main"});
  ExpectParts(one, {"\nMain\t2.42km\t", "\nTotals\t2.42km\t"});
  EXPECT_EQ(one.find("Plot"), std::string::npos) << one;
  ExpectCannotFind({"trails", "rich.map", "--trail", "Nowhere"}, "Nowhere");
}

TEST_F(RichSiteCommands, IndexPrintsTheFormOfAnglesThatIsAsked) {
  ExpectParts(Print({"index", "rich.map", "--format", "degrees"}),
              {"\nBase\tN0.000000°", "\nRidge\tN0.000000° E0.010000°\t30m\t"});
  ExpectParts(Print({"index", "rich.map"}), {"\nRidge\tN0° 0.000' E0° 0.600'\t30m\t"});
  ExpectParts(Print({"index", "rich.map", "--format", "seconds"}),
              {"\nRidge\tN0° 0' 0.0\" E0° 0' 36.0\"\t30m\t"});
}

TEST_F(RichSiteCommands, RangesPrintsRangesAndTheirOverlap) {
  const std::string all = Print({"ranges", "rich.map"});
  ExpectParts(all, {"\t\tFen range\nMCP area: 30ha ", "\t\tOru range\nMCP area: 24ha ",
                    "\t\tIntersection of Fen range and Oru range\nMCP area: 7.4ha\n",
                    "Time of Fen range in Oru range: 25.00%\n"});
  const std::string one = Print({"ranges", "rich.map", "--range", "FEN RANGE"});
  ExpectParts(one, {"\t\tFen range\n"});
  EXPECT_EQ(one.find("Oru"), std::string::npos) << one;
  ExpectCannotFind({"ranges", "rich.map", "--range", "Nowhere"}, "Nowhere");
}

TEST_F(RichSiteCommands, ContoursTakesTheIntervalOfTheMapOrAnOption) {
  const std::string ownInterval = Print({"contours", "rich.map"});
  ExpectParts(ownInterval, {"{\"type\": \"FeatureCollection\"", "\"level\":30.0"});
  const std::string wide = Print({"contours", "rich.map", "--continuous", "--interval", "40"});
  ExpectParts(wide, {"\"level\":40.0", "\"closed\":false"});
  EXPECT_EQ(wide.find("\"level\":30.0"), std::string::npos) << wide;
}

TEST_F(RichSiteCommands, ProfilePrintsAColumnALine) {
  const std::string ofTrail = Print({"profile", "rich.map", "--trail", "Main", "--width", "5"});
  EXPECT_EQ(std::count(ofTrail.begin(), ofTrail.end(), '\n'), 6) << ofTrail;
  ExpectParts(
      ofTrail,
      {"column\tdistance\tlat\tlon\taltitude\tlabel\n0\t0.0\t0.0\t0.0\t10.0\tCamp\n", "\tHut\n"});
  ExpectParts(Print({"profile", "rich.map", "--transect", "Camp", "Top", "--width", "4"}),
              {"\n3\t1571.", "\t0.01\t0.01\t80.0\t\n"});
  ExpectCannotFind({"profile", "rich.map", "--trail", "Nowhere"}, "Nowhere");
  ExpectCannotFind({"profile", "rich.map", "--transect", "Camp", "Nowhere"}, "Nowhere");
}

}  // namespace
}  // namespace orvane
