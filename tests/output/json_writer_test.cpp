#include "output/json_writer.h"

#include <cmath>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace orvane {
namespace {

TEST(JsonWriter, SeparatesValues) {
  std::string text;
  const TextSink sink = [&](std::string_view piece) {
    text += piece;
    return true;
  };
  JsonWriter json(sink);
  json.BeginObject();
  json.Key("a");
  json.BeginArray();
  json.NewLine();
  json.Number(0.1);
  json.NewLine();
  json.Whole(-3);
  json.Null();
  json.Number(std::nan(""));
  json.EndArray();
  json.Key("b");
  json.BeginObject();
  json.EndObject();
  json.EndObject();
  EXPECT_TRUE(json.Finish());
  EXPECT_EQ(text, "{\"a\":[\n0.1,\n-3,null,null],\"b\":{}}\n");
}

TEST(JsonWriter, TakesAnyText) {
  std::string bytes;
  for (int c = 0; c < 256; ++c) bytes += static_cast<char>(c);
  for (const std::string& given :
       {bytes, std::string("M\xC3\xBChle \"x\" \\ \n"), bytes.substr(0, 128)}) {
    std::string text;
    const TextSink sink = [&](std::string_view piece) {
      text += piece;
      return true;
    };
    JsonWriter json(sink);
    json.Text(given);
    EXPECT_TRUE(json.Finish());
    const auto read = nlohmann::json::parse(text, nullptr, false);
    ASSERT_TRUE(read.is_string());
    EXPECT_EQ(read.get<std::string>().substr(0, 128).find('\0'), given.find('\0'));
    EXPECT_EQ(given.size() != 256, read.get<std::string>() == given);
  }
}

TEST(JsonWriter, ReportsThatTheSinkFailed) {
  const TextSink sink = [](std::string_view) { return false; };
  JsonWriter json(sink);
  json.Null();
  EXPECT_FALSE(json.Finish());
}

TEST(JsonWriter, PassesALongTextInPieces) {
  std::vector<std::string> pieces;
  const TextSink sink = [&](std::string_view piece) {
    pieces.emplace_back(piece);
    return pieces.size() < 2;
  };
  JsonWriter json(sink);
  json.BeginArray();
  const std::string filling(1000, 'x');
  for (int i = 0; i < 200; ++i) {
    json.BeginArray();
    json.Text(filling);
    json.EndArray();
  }
  json.EndArray();
  EXPECT_FALSE(json.Finish());
  // The sink refused the second piece and got no more.
  ASSERT_EQ(pieces.size(), 2U);
  EXPECT_TRUE(pieces[0].starts_with("[[\"" + filling + "\"],[\""));
  EXPECT_GT(pieces[0].size(), 60000U);
  EXPECT_LT(pieces[0].size(), 70000U);
}

}  // namespace
}  // namespace orvane
