#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace orvane {

/// Numbers that come out alike with every library, for a seed.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}

  /// \return a number from 0 up to but not including `count`
  int Below(int count) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(count)); }
  /// \return true once in `count` times
  bool OneIn(int count) { return Below(count) == 0; }
  /// \return a number from `low` up to but not including `high`
  double Between(double low, double high) {
    constexpr double Steps = 1e6;
    return low + (high - low) * Below(static_cast<int>(Steps)) / Steps;
  }
  template <typename List>
  auto& Of(List& list) {
    return list[static_cast<size_t>(Below(static_cast<int>(std::size(list))))];
  }

 private:
  std::mt19937_64 engine_;
};

/// The text of a map with everything that a map may hold: trails, follows, described places, grids,
/// ranges, shots, names that nobody would give; some have a basis, some are empty, some damaged.
class RandomMap {
 public:
  explicit RandomMap(Dice& dice) : dice_(dice) {}

  /// \param basis  the file that may be the basis; empty for none
  std::string Text(std::string_view basis) {
    text_.clear();
    PickMiddle();
    if (dice_.OneIn(8)) return {};
    if (!basis.empty()) Line("B\t" + std::string(basis));
    if (dice_.OneIn(3)) Line("\xA9 2003 " + Name());
    if (dice_.OneIn(3)) Line("# " + Name());
    if (dice_.OneIn(3)) Line("M\t" + Number(-20, 20));
    if (dice_.OneIn(3)) Line("Z\tfruit,leaf\t1,10");
    for (int trails = dice_.Below(5); trails > 0; --trails) AddTrail();
    for (int follows = dice_.Below(5); follows > 0; --follows) AddFollow();
    for (int places = dice_.Below(5); places > 0; --places) AddPlace();
    if (dice_.OneIn(2)) AddGrid();
    if (dice_.OneIn(2)) AddRanges();
    if (dice_.OneIn(6)) Damage();
    return text_;
  }

  /// The text of a file of a GPS unit, some of them damaged.
  std::string GpsText() {
    text_ = "name,time,x,y,lat,lon,alt\n";
    PickMiddle();
    const int tracks = dice_.Below(5);
    for (int track = 0; track < tracks; ++track) {
      const std::string name = Name();
      for (int fix = dice_.Below(12); fix >= 0; --fix) {
        Line(name + ",2003-05-0" + std::to_string(1 + track) + " 06:" + TwoDigits(fix) + ",,," +
             Number(lat_, lat_ + size_) + "," + Number(lon_, lon_ + size_) + ",100");
      }
    }
    if (dice_.OneIn(5)) Damage();
    return text_;
  }

  /// The text of a follow sheet with the columns date, species, focal animal, time and place, some
  /// of them damaged.
  std::string SheetText() {
    text_.clear();
    PickMiddle();
    const std::string animal = Name();
    for (int row = dice_.Below(40); row > 0; --row) {
      const std::string place =
          dice_.OneIn(3) ? Name() : Number(lat_, lat_ + size_) + " " + Number(lon_, lon_ + size_);
      Line("2003-5-" + std::to_string(1 + dice_.Below(3)) + "\tOru\t" + animal + "\t" +
           std::to_string(dice_.Below(30)) + TwoDigits(dice_.Below(62)) + "\t" + place);
    }
    if (dice_.OneIn(5)) Damage();
    return text_;
  }

  /// A name of a point, a trail or an animal, good or bad.
  std::string Name() {
    static constexpr std::array<std::string_view, 22> Odd{"",
                                                          "A=B=C",
                                                          "_hidden",
                                                          "@swamp",
                                                          "Ridge[1-3]",
                                                          "0725",
                                                          "0700-30",
                                                          "H\xC3\xB6hle",
                                                          "\xE9tang",
                                                          "100% %s %n",
                                                          "R&amp;D <b>x</b>",
                                                          "a\\b",
                                                          "\"q\"",
                                                          "Camp, 5m",
                                                          "=",
                                                          "Group I",
                                                          "All",
                                                          "x/y",
                                                          "-1",
                                                          "1e400",
                                                          "&File",
                                                          "\xF0\x9F\x90\x92"};
    if (dice_.OneIn(40)) return std::string(300, 'L');
    if (dice_.OneIn(4)) return std::string(dice_.Of(Odd));
    return Mark(dice_.Below(4), dice_.Below(12));
  }

 private:
  void Line(const std::string& line) { text_ += line + (dice_.OneIn(20) ? "\r\n" : "\n"); }

  static std::string Mark(int trail, int number) {
    static constexpr std::array<std::string_view, 4> Trails{"Kana", "Pilu", "Tolu", "Beno"};
    return std::string(Trails[static_cast<size_t>(trail)]) + std::to_string(25 * number);
  }
  static std::string TwoDigits(int number) {
    return {static_cast<char>('0' + number / 10 % 10), static_cast<char>('0' + number % 10)};
  }
  std::string Number(double low, double high) {
    return dice_.OneIn(100) ? "nan" : std::to_string(dice_.Between(low, high));
  }
  std::string Fix() {
    return Number(lat_, lat_ + size_) + "\t" + Number(lon_, lon_ + size_) +
           (dice_.OneIn(2) ? "\t" + Number(-100, 3000) : std::string());
  }
  std::string Style() {
    static constexpr std::array<std::string_view, 6> Styles{"",       "\t\t2,,,,C2", "\t\t90c",
                                                            "\t\t1k", "\t\t,1,2,3",  "\t\t0,,,,s9"};
    return std::string(dice_.Of(Styles));
  }

  /// The place of the map on the earth, and its width, in degrees.
  void PickMiddle() {
    static constexpr std::array<double, 6> Lats{1.37, -45.2, 89.99, -89.999, 0, 60};
    static constexpr std::array<double, 6> Lons{115.6, -179.995, 179.99, 0, -60, 10};
    static constexpr std::array<double, 4> Sizes{0.01, 0.1, 1e-6, 20};
    const bool plain = !dice_.OneIn(3);
    lat_ = plain ? Lats[0] : dice_.Of(Lats);
    lon_ = plain ? Lons[0] : dice_.Of(Lons);
    size_ = plain ? Sizes[0] : dice_.Of(Sizes);
  }

  void AddTrail() {
    static constexpr std::array<std::string_view, 6> Styles{"",
                                                            "2,,Solid,Auto,,,HalfTick",
                                                            ",#b8d8d0,Solid,None,1,6",
                                                            "1e9,red,Dotted,All,1,7,Circle",
                                                            "5,blue,Dashed,FirstLast,0,3,Cross,n",
                                                            "-3,#c03020,Solid,None,1,2,Plus,v"};
    const int trail = dice_.Below(4);
    Line("T\t" + (dice_.OneIn(3) ? Name() : Mark(trail, 0).substr(0, 4)) + "\tTrail\t\t\t" +
         std::string(dice_.Of(Styles)));
    const int count = dice_.OneIn(10) ? 400 : dice_.Below(15);
    for (int i = 0; i < count; ++i) {
      const std::string name = dice_.OneIn(6) ? Name() : Mark(trail, i);
      if (dice_.OneIn(3)) {
        Line("C\t" + name + "\t" + Mark(trail, i == 0 ? 0 : i - 1) + "\t" + Number(0, 100) + "\t" +
             Number(0, 360) + "\t" + Number(-20, 20));
      } else if (dice_.OneIn(6)) {
        Line("P\t" + name);
      } else {
        Line("G\t" + name + "\t" + Fix() + Style());
      }
    }
    if (dice_.OneIn(2)) Line("T");
  }

  void AddFollow() {
    Line("T\t\tGroup I\tTarka,7\t2003-3-1" + std::to_string(dice_.Below(10)));
    const int count = dice_.Below(20);
    for (int i = 0; i < count; ++i) {
      const std::string hour = TwoDigits(6 + i / 4);
      const std::string time = hour + TwoDigits(15 * (i % 4));
      if (dice_.OneIn(3)) {
        Line("N\t" + time + "\t" + Place());
      } else {
        Line("G\t" + time + (dice_.OneIn(3) ? "-" + hour + "59" : std::string()) + "\t" + Fix());
      }
    }
    Line("T");
  }

  std::string Place() {
    std::string mark = Mark(dice_.Below(4), dice_.Below(12));
    switch (dice_.Below(5)) {
      case 0:
        return Number(0, 60) + "m north of " + mark;
      case 1:
        return "From Kana0 to Kana100 along Kana by 1/3";
      case 2:
        return mark + ", " + Name();
      case 3:
        return Name();
      default:
        return mark;
    }
  }

  void AddPlace() {
    static constexpr std::array<std::string_view, 4> Tags{"N", "L", "A", "P"};
    const std::string_view tag = dice_.Of(Tags);
    std::string line = std::string(tag) + "\t" + Name() + "\t";
    if (tag == "N") line += Place() + Style();
    if (tag == "L") line += Fix();
    if (tag == "A") line += Number(0, 3000);
    Line(line);
  }

  void AddGrid() {
    Line("L\tCorner\t" + Number(lat_, lat_ + size_) + "\t" + Number(lon_, lon_ + size_));
    Line("O\tCorner");
    Line("H\tCorner\t" + std::to_string(dice_.Below(200)) + "\t" + std::to_string(dice_.Below(30)) +
         "\t" + std::to_string(dice_.Below(30)) + "\t" + Number(0, 90) + "\tA\t01");
    for (int shades = dice_.Below(4); shades > 0; --shades) {
      Line("HS\tB" + std::to_string(dice_.Below(20)) + "\tred");
    }
  }

  void AddRanges() {
    for (int ranges = 1 + dice_.Below(3); ranges > 0; --ranges) {
      Line("R\t" + Name());
      Line(dice_.OneIn(2) ? "K\tGroup I" : "K\tPoints:" + Name());
    }
    Line("R");
  }

  /// Spoils some bytes, as a bad disk or a slip of an editor does.
  void Damage() {
    if (text_.empty()) return;
    for (int faults = 1 + dice_.Below(10); faults > 0; --faults) {
      dice_.Of(text_) = static_cast<char>(dice_.Below(256));
    }
    if (dice_.OneIn(3)) text_.resize(text_.size() / 2);
  }

  Dice& dice_;
  std::string text_;
  double lat_ = 0;
  double lon_ = 0;
  double size_ = 0.01;
};

}  // namespace orvane
