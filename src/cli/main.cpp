#include "cli/commands.h"
#include "cli/contours_command.h"
#include "cli/edit_command.h"
#include "cli/estimates_command.h"
#include "cli/exit_status.h"
#include "cli/export_command.h"
#include "cli/import_command.h"
#include "cli/import_fixes_command.h"
#include "cli/import_gis_command.h"
#include "cli/line_messages.h"
#include "cli/number_options.h"
#include "cli/preview_command.h"
#include "cli/profile_command.h"
#include "cli/reports_command.h"
#include "cli/residuals_command.h"
#include "cli/text_output.h"
#include "mapfile/open_map.h"
#include "model/workspace.h"
#include "output/layers.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#if defined(ORVANE_DRAWS) || defined(ORVANE_HANDS_OVER)
#include "cli/hand_over.h"
#include "cli/print_command.h"
#include "cli/render_command.h"
#define ORVANE_HAS_RENDER
#endif

// Each command reads its options into a record of its own and leaves a function that runs on the
// opened map.

namespace orvane {

namespace {

/// Runs on the opened map. \return the exit status
using Work = std::function<int(Map& map, LineMessages& messages)>;

struct CommandLine {
  CLI::App app{"Maps and home ranges for field biologists, as a batch tool"};
  bool europeanDates = false;
  int answer = 1;
  bool where = false;
  std::string mapFile;
  bool makesMap = false;  ///< a map that does not exist is an empty one
  Work work;
  bool handsOver = false;  ///< another program does the work, with the same arguments
};

/// Adds a command that opens one map.
CLI::App* AddMapCommand(CommandLine& line, const std::string& name, const std::string& help,
                        CLI::App* parent = nullptr) {
  CLI::App* command = (parent == nullptr ? line.app : *parent).add_subcommand(name, help);
  command->add_option("MAP", line.mapFile, "the map file")->required();
  return command;
}

void AddDump(CommandLine& line) {
  CLI::App* command = AddMapCommand(line, "dump", "Print the whole solved map as JSON");
  command->callback([&line] {
    line.work = [](Map& map, LineMessages& messages) { return DumpCommand(map, messages); };
  });
}

void AddSave(CommandLine& line) {
  struct Options {
    std::string output;
    bool simple = false;
  };
  auto options = std::make_shared<Options>();
  CLI::App* command = AddMapCommand(line, "save", "Write the map to another file");
  command->add_option("OUT", options->output, "the file to write; - for standard output")
      ->required();
  command->add_flag("--simple", options->simple, "without the solved places");
  command->callback([&line, options] {
    line.work = [options](Map& map, LineMessages& messages) {
      (void)messages;
      return SaveCommand(map, options->output, options->simple);
    };
  });
}

void AddLocate(CommandLine& line) {
  auto text = std::make_shared<std::string>();
  CLI::App* command = AddMapCommand(line, "locate", "Print the place that a text means as JSON");
  command->add_option("TEXT", *text, "a location, such as \"20m east of Camp\"")->required();
  command->callback([&line, text] {
    line.work = [text](Map& map, LineMessages& messages) {
      return LocateCommand(map, messages, *text);
    };
  });
}

void AddCheck(CommandLine& line) {
  struct Options {
    std::vector<std::string> trails;
    bool showAll = false;
  };
  auto options = std::make_shared<Options>();
  CLI::App* command = AddMapCommand(line, "check", "Check the order of the points of trails");
  command->add_option("--trail", options->trails, "a trail to check; all if none is given")
      ->type_name("NAME")
      ->allow_extra_args(false);
  command->add_flag("--show-all", options->showAll, "do not stop after a few warnings");
  command->callback([&line, options] {
    line.work = [options](Map& map, LineMessages& messages) {
      return CheckCommand(map, messages, options->trails, options->showAll);
    };
  });
}

void AddTrails(CommandLine& line) {
  auto names = std::make_shared<std::vector<std::string>>();
  CLI::App* command = AddMapCommand(line, "trails", "Print the Trail Summary");
  command->add_option("--trail", *names, "a trail to list; all if none is given")
      ->type_name("NAME")
      ->allow_extra_args(false);
  command->callback([&line, names] {
    line.work = [names](Map& map, LineMessages& messages) {
      return TrailsCommand(map, messages, *names);
    };
  });
}

/// Adds `--format`, the form of positions.
void AddFormat(CLI::App& command, const std::function<void(CoordinateDisplay)>& take) {
  static const std::map<std::string, CoordinateDisplay> formats = {
      {"degrees", CoordinateDisplay::Degrees},
      {"minutes", CoordinateDisplay::Minutes},
      {"seconds", CoordinateDisplay::Seconds},
      {"utm", CoordinateDisplay::Utm}};
  command
      .add_option_function<std::string>(
          "--format", [take](const std::string& name) { take(formats.at(name)); },
          "the form of positions; minutes if not given")
      ->type_name("degrees|minutes|seconds|utm")
      ->check(CLI::IsMember({"degrees", "minutes", "seconds", "utm"}));
}

void AddIndex(CommandLine& line) {
  auto display = std::make_shared<CoordinateDisplay>(CoordinateDisplay::Minutes);
  CLI::App* command = AddMapCommand(line, "index", "Print the Point Index");
  AddFormat(*command, [display](CoordinateDisplay format) { *display = format; });
  command->callback([&line, display] {
    line.work = [display](Map& map, LineMessages& messages) {
      (void)messages;
      return IndexCommand(map, *display);
    };
  });
}

void AddRanges(CommandLine& line) {
  auto names = std::make_shared<std::vector<std::string>>();
  CLI::App* command = AddMapCommand(line, "ranges", "Print the figures of ranges and overlaps");
  command->add_option("--range", *names, "a range or an overlap to report; all if none is given")
      ->type_name("NAME")
      ->allow_extra_args(false);
  command->callback([&line, names] {
    line.work = [names](Map& map, LineMessages& messages) {
      return RangesCommand(map, messages, *names);
    };
  });
}

void AddEstimates(CommandLine& line) {
  auto request = std::make_shared<EstimatesRequest>();
  CLI::App* command =
      AddMapCommand(line, "estimates", "Print estimates of the home ranges as JSON");
  command->add_option("--range", request->ranges, "a range to estimate; all if none is given")
      ->type_name("NAME")
      ->allow_extra_args(false);
  AddNumber(*command, "--bandwidth-factor", request->bandwidthFactor,
            RealNumbers{std::nextafter(LeastBandwidthFactor, 0.0), "a number from 0.1 to 2",
                        LargestBandwidthFactor},
            "multiplies the bandwidth of the kernels; 1 if not given")
      ->type_name("F");
  AddNumber(*command, "--seed", request->seed,
            Counts{true, "a whole number from 0 to 18446744073709551615"},
            "start of the random orders of the days; 1 if not given")
      ->type_name("N");
  command->callback([&line, request] {
    line.work = [request](Map& map, LineMessages& messages) {
      return EstimatesCommand(map, messages, *request);
    };
  });
}

void AddResiduals(CommandLine& line) {
  auto request = std::make_shared<ResidualsRequest>();
  CLI::App* command =
      AddMapCommand(line, "residuals", "Print the errors of readings and chains as JSON");
  AddNumber(*command, "--worst", request->worst, Counts{false, "a whole number from 0 on"},
            "only the N largest of each, in falling order")
      ->type_name("N");
  command->callback([&line, request] {
    line.work = [request](Map& map, LineMessages& messages) {
      (void)messages;
      return ResidualsCommand(map, *request);
    };
  });
}

void AddMapOutput(CLI::App& command, std::string& output) {
  command.add_option("-o,--output", output, "the map to write; - for standard output")
      ->required()
      ->type_name("OUT");
}

/// The choice of one of the sheets of a spreadsheet.
void AddSheetChoice(CLI::App& command, SheetChooser& choose) {
  command
      .add_option_function<std::string>(
          SheetNameOption, [&choose](const std::string& name) { choose = ChooseNamed(name); },
          "the sheet of a spreadsheet; the first if not given")
      ->type_name("NAME");
}

/// The options of `import` and its preview.
void AddSheetOptions(CLI::App& command, ImportRequest& request) {
  command
      .add_option("SHEET", request.sheet,
                  "tab-separated text, .csv, .xlsx, .xls or .ods, a row a line")
      ->required();
  AddSheetChoice(command, request.chooseSheet);
  for (const SheetOption& option : SheetOptions()) {
    command.add_option(option.option, request.fields[option.field], option.help)
        ->type_name(option.type);
  }
}

void AddImport(CommandLine& line) {
  auto request = std::make_shared<ImportRequest>();
  CLI::App* command = AddMapCommand(line, "import", "Import a follow sheet into the map");
  AddSheetOptions(*command, *request);
  AddMapOutput(*command, request->output);
  command->callback([&line, request] {
    line.work = [request](Map& map, LineMessages& messages) {
      return ImportCommand(map, messages, *request);
    };
  });
}

/// The options of `import-gis` and its preview.
void AddGisOptions(CLI::App& command, ImportGisRequest& request) {
  command.add_option("FILE", request.file, "comma-separated text, GPX or KML")->required();
  GisTrailFields& fields = request.fields;
  for (const GisOption& option : GisOptions()) {
    command.add_option(option.option, fields.*option.field, option.help)->type_name(option.type);
  }
  command.add_flag(GisKeepAltitudeOption, fields.boxes.keepAltitude, "take the altitudes as well");
  command.add_flag(GisTimesOption, fields.boxes.times,
                   "a trail for each day of a GPX or KML track, its points named by the clock");
}

void AddImportGis(CommandLine& line) {
  auto request = std::make_shared<ImportGisRequest>();
  CLI::App* command =
      AddMapCommand(line, "import-gis", "Import GPS tracks and waypoints into the map");
  AddGisOptions(*command, *request);
  AddMapOutput(*command, request->output);
  command->callback([&line, request] {
    line.work = [request](Map& map, LineMessages& messages) {
      return ImportGisCommand(map, messages, *request);
    };
  });
}

/// Reads "lat=Breite,lon=Länge". Throws `CLI::ValidationError` for any other text.
void ReadFixColumns(const std::string& text, std::vector<NamedFixColumn>& columns) {
  for (size_t begin = 0; begin <= text.size();) {
    const size_t end = std::min(text.find(',', begin), text.size());
    const std::string part = text.substr(begin, end - begin);
    const size_t equals = part.find('=');
    const auto field = FindFixField(part.substr(0, equals));
    if (!field || equals == std::string::npos) {
      throw CLI::ValidationError(
          "--columns", (part.empty() ? "\"\"" : part) + " is not FIELD=CAPTION with a known field");
    }
    columns.push_back({*field, part.substr(equals + 1)});
    begin = end + 1;
  }
}

/// The options that say how a table of fixes is read and what is taken of it.
void AddFixOptions(CLI::App& command, ImportFixesRequest& request) {
  FixOptions& options = request.options;
  command.add_option("TABLE", request.table, "rows with time, position and animal")->required();
  AddSheetChoice(command, options.chooseSheet);
  constexpr double BelowZero = -std::numeric_limits<double>::denorm_min();
  command.add_option("--type", options.type, "the type of the trails; the species if not given")
      ->type_name("TYPE");
  command
      .add_option_function<std::string>(
          "--utc-offset",
          [&options](const std::string& text) {
            const auto clock = ReadFixClock(text);
            if (!clock) {
              throw CLI::ValidationError("--utc-offset", (text.empty() ? "\"\"" : text) +
                                                             " is not +HH:MM, -HH:MM, auto or the "
                                                             "name of a time zone");
            }
            options.clock = *clock;
          },
          "the clock of the site; by its longitude if not given")
      ->type_name("+HH:MM|-HH:MM|auto|ZONE");
  command
      .add_option_function<std::string>(
          "--every",
          [&options](const std::string& text) {
            const Counts counts{false, "a whole number from 1 on"};
            options.filters.every = ReadNumber("--every", text, counts);
            if (options.filters.every == 0) {
              throw CLI::ValidationError("--every", text + " is not " + counts.wanted);
            }
          },
          "take every N-th fix of an animal")
      ->type_name("N");
  AddNumber(command, "--min-minutes", options.filters.minMinutes,
            RealNumbers{BelowZero, "a number of minutes from 0 on"},
            "leave out fixes sooner after the one before on the same day")
      ->type_name("M");
  AddNumber(command, "--min-metres", options.filters.minMeters,
            RealNumbers{BelowZero, "a number of metres from 0 on"},
            "leave out fixes nearer to the one before on the same day")
      ->type_name("D");
  AddNumber(command, "--max-speed", options.filters.maxSpeed, RealNumbers{0, "a speed above 0"},
            "leave out fixes that need more km/h from the one before")
      ->type_name("KMH");
  command.add_flag("--keep-outliers", options.filters.keepsOutliers,
                   "take fixes that the table marks as outliers");
  command
      .add_option_function<std::string>(
          "--columns",
          [&options](const std::string& text) { ReadFixColumns(text, options.reading.columns); },
          "the captions of fields whose columns are not found by themselves")
      ->type_name("FIELD=CAPTION,...")
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->trigger_on_parse();
  command.add_flag_callback(
      "--no-ranges", [&options] { options.makesRanges = false; }, "make no home ranges");
}

void AddImportFixes(CommandLine& line) {
  auto request = std::make_shared<ImportFixesRequest>();
  CLI::App* command =
      AddMapCommand(line, "import-fixes", "Import timestamped fixes of animals into the map");
  AddFixOptions(*command, *request);
  AddMapOutput(*command, request->output);
  command->callback([&line, request] {
    line.work = [request](Map& map, LineMessages& messages) {
      return ImportFixesCommand(map, messages, *request);
    };
  });
}

/// Adds the preview of an import under `preview`.
template <typename Request>
void AddPreviewOf(CommandLine& line, CLI::App& preview, const std::string& name,
                  void (*addOptions)(CLI::App&, Request&),
                  int (*run)(Map&, LineMessages&, const Request&)) {
  auto request = std::make_shared<Request>();
  CLI::App* command =
      AddMapCommand(line, name, "Print what " + name + " would do with each row", &preview);
  addOptions(*command, *request);
  command->callback([&line, request, run] {
    line.work = [request, run](Map& map, LineMessages& messages) {
      return run(map, messages, *request);
    };
  });
}

void AddPreview(CommandLine& line) {
  CLI::App* preview = line.app.add_subcommand("preview", "Print what an import would do");
  preview->require_subcommand(1);
  AddPreviewOf(line, *preview, "import", AddSheetOptions, PreviewSheetCommand);
  AddPreviewOf(line, *preview, "import-fixes", AddFixOptions, PreviewFixesCommand);
  AddPreviewOf(line, *preview, "import-gis", AddGisOptions, PreviewGisCommand);
}

void AddEdit(CommandLine& line) {
  auto request = std::make_shared<EditRequest>();
  CLI::App* command = AddMapCommand(line, "edit", "Carry out a script at panes and editors");
  command->add_option("SCRIPT", request->script, "one action a line; - for standard input")
      ->required();
  command->add_option("-o,--output", request->output, "the map to write; - for standard output")
      ->type_name("OUT");
  command->add_flag("--simple", request->simple, "without the solved places");
  command->add_flag("--new", line.makesMap, "start from an empty map if MAP does not exist");
  command->callback([&line, request] {
    line.work = [request](Map& map, LineMessages& messages) {
      return EditCommand(map, messages, *request);
    };
  });
}

void AddContours(CommandLine& line) {
  auto request = std::make_shared<ContoursRequest>();
  CLI::App* command = AddMapCommand(line, "contours", "Print contour lines as GeoJSON");
  AddNumber(*command, "--interval", request->interval,
            WholeNumbers{1, std::numeric_limits<int>::max(), "a whole number of metres from 1 on"},
            "between levels; that of the map if not given")
      ->type_name("METRES");
  command->add_flag("--continuous", request->continuous, "lines without gaps");
  command->callback([&line, request] {
    line.work = [request](Map& map, LineMessages& messages) {
      return ContoursCommand(map, messages, *request);
    };
  });
}

/// \return the parts of a text between commas
std::vector<std::string> PartsOf(const std::string& text) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == ',') {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

void ReadLayerNames(const std::string& text, LayerRequest& request) {
  for (const std::string& name : PartsOf(text)) {
    if (!IsLayerName(name)) throw CLI::ValidationError("--layers", "no layer \"" + name + "\"");
    if (std::find(request.layers.begin(), request.layers.end(), name) == request.layers.end()) {
      request.layers.push_back(name);
    }
  }
}

void ReadLayerSystem(const std::string& text, LayerRequest& request) {
  const auto system = ParseLayerSystem(text);
  if (!system) throw CLI::ValidationError("--crs", "must be wgs84, utm or EPSG:N");
  // Without the module nothing is written anyway.
  const FormatModule* const module =
      system->number == Wgs84System || system->isUtm ? nullptr : LoadFormatModule().module;
  if (module != nullptr && !module->knowsSystem(system->number)) {
    throw CLI::ValidationError("--crs", "no coordinate system " + text);
  }
  request.system = *system;
}

/// Adds the formats of layers and their options.
/// \param others  the options and arguments of other formats
void AddLayerFormats(CLI::App& command, const std::shared_ptr<ExportRequest>& request,
                     std::vector<CLI::Option*> others) {
  constexpr std::pair<const char*, LayerFormat> Formats[] = {{"--gpkg", LayerFormat::GeoPackage},
                                                             {"--kml", LayerFormat::Kml},
                                                             {"--gpx", LayerFormat::Gpx},
                                                             {"--fgb", LayerFormat::FlatGeobuf},
                                                             {"--csv", LayerFormat::Csv}};
  for (const auto& [option, format] : Formats) {
    CLI::Option* const added = command.add_option_function<std::string>(
        option,
        [request, wanted = format](const std::string& path) {
          request->layers.emplace();
          request->layers->format = wanted;
          request->layers->path = path;
        },
        "the " + std::string(FormatName(format)) + " file to write; - for standard output");
    added->type_name("FILE");
    for (CLI::Option* const other : others) added->excludes(other);
    others.push_back(added);
  }
  command
      .add_option("--layers", request->layerNames,
                  "the layers to write; all but estimates if not given")
      ->type_name("NAME,...");
  command.add_option("--crs", request->system, "the coordinate system; wgs84 if not given")
      ->type_name("wgs84|utm|EPSG:N");
}

/// Completes the request for layers. Throws if its options don't fit.
void CheckLayerRequest(ExportRequest& request) {
  if (!request.layers) {
    for (const auto& [option, value] :
         {std::pair("--layers", &request.layerNames), std::pair("--crs", &request.system)}) {
      if (*value) throw CLI::ValidationError(option, "needs --gpkg, --kml, --gpx, --fgb or --csv");
    }
    return;
  }
  if (request.layers->path.empty()) throw CLI::ValidationError("FILE", "must not be empty");
  if (request.layerNames) ReadLayerNames(*request.layerNames, *request.layers);
  if (request.system) ReadLayerSystem(*request.system, *request.layers);
  const LayerSystem& system = request.layers->system;
  if (NeedsWgs84(request.layers->format) && (system.isUtm || system.number != Wgs84System)) {
    throw CLI::ValidationError(
        "--crs", std::string(FormatName(request.layers->format)) + " is always in wgs84");
  }
  if (request.layers->path == "-" && HoldsOneLayer(request.layers->format) &&
      request.layers->layers.size() != 1) {
    throw CLI::ValidationError("--layers", "must name one layer for standard output");
  }
}

void AddExport(CommandLine& line) {
  auto request = std::make_shared<ExportRequest>();
  CLI::App* command = AddMapCommand(line, "export", "Write the map for a GIS or a GPS unit");
  CLI::Option* directory =
      command->add_option("DIRECTORY", request->directory, "the folder for the shapefiles");
  CLI::Option* projection = command->add_flag("--prj", request->projection,
                                              "a .prj (WGS 84) and a .cpg beside each shapefile");
  CLI::Option* geoJson =
      command->add_option("--geojson", request->geoJson, "the file to write; - for standard output")
          ->type_name("FILE")
          ->excludes(directory)
          ->excludes(projection);
  AddLayerFormats(*command, request, {directory, projection, geoJson});
  command->callback([&line, request] {
    CheckLayerRequest(*request);
    if (request->directory.empty() && request->geoJson.empty() && !request->layers) {
      throw CLI::RequiredError("DIRECTORY or --geojson FILE or another format");
    }
    line.work = [request](Map& map, LineMessages& messages) {
      return ExportCommand(map, messages, *request);
    };
  });
}

void AddProfile(CommandLine& line) {
  auto request = std::make_shared<ProfileRequest>();
  CLI::App* command =
      AddMapCommand(line, "profile", "Print altitudes along a trail or a straight line");
  CLI::Option_group* lines = command->add_option_group("line");
  lines->require_option(1);
  lines->add_option("--trail", request->trail, "the trail")->type_name("NAME");
  lines->add_option("--transect", request->transect, "from one location to another")
      ->type_name("TEXT TEXT")
      ->expected(2);
  AddNumber(*command, "--width", request->width,
            WholeNumbers{2, 32000, "a whole number of pixels from 2 to 32000"},
            "how many columns; 800 if not given")
      ->type_name("PIXELS");
  command->callback([&line, request] {
    line.work = [request](Map& map, LineMessages& messages) {
      return ProfileCommand(map, messages, *request);
    };
  });
}

#ifdef ORVANE_HAS_RENDER
/// Reads "1024x768". \return an empty text, or what is wrong
std::string ReadSize(const std::string& text, RenderRequest& request) {
  constexpr int Largest = 32000;
  int width = 0;
  int height = 0;
  int length = 0;
  const int read = std::sscanf(text.c_str(), "%5dx%5d%n", &width, &height, &length);
  if (read != 2 || text.size() != static_cast<size_t>(length) || width < 1 || height < 1 ||
      width > Largest || height > Largest) {
    return "--size: " + text + " is not WIDTHxHEIGHT in pixels, such as 1024x768, to 32000x32000";
  }
  request.width = width;
  request.height = height;
  return {};
}

void AddRender(CommandLine& line) {
  auto request = std::make_shared<RenderRequest>();
  CLI::App* command = AddMapCommand(line, "render", "Draw the map into a picture");
  command
      ->add_option("-o,--output", request->output,
                   "the picture: a .png, .svg or .pdf file, or - for a PNG on standard output")
      ->required();
  command
      ->add_option_function<std::string>(
          "--size",
          [request](const std::string& text) {
            const std::string wrong = ReadSize(text, *request);
            if (!wrong.empty()) throw CLI::ValidationError(wrong);
          },
          "the size in pixels; 1024x768 if not given")
      ->type_name("WIDTHxHEIGHT");
  command->add_option("--center", request->center, "the location in the middle")->type_name("TEXT");
  AddNumber(*command, "--scale", request->scale, RealNumbers{0, "a number of metres above 0"},
            "metres per pixel")
      ->type_name("METRES");
  command->add_flag("--fit", request->fit, "show all points of the map and its basis");
  AddNumber(*command, "--rotate", request->rotate,
            RealNumbers{-std::numeric_limits<double>::infinity(), "a number of degrees"},
            "turn the view")
      ->type_name("DEGREES");
  command->add_flag("--hide-grids", request->hideGrids, "draw no grids");
  command->add_flag("--contours", request->contours, "make contour lines and draw them");
  command->add_flag("--classic-contours", request->classicContours,
                    "draw those of the Contours group, with their gaps");
  command->add_flag("--show-all-trails", request->showAllTrails,
                    "draw trails that start hidden as well");
  command->add_flag("--antialias", request->antialias, "smooth lines");
  command->callback([&line, request] {
#ifdef ORVANE_DRAWS
    line.work = [request](Map& map, LineMessages& messages) {
      return RenderCommand(map, messages, *request);
    };
#else
    line.handsOver = true;
#endif
  });
}
#endif

#ifdef ORVANE_HAS_RENDER
/// The names of all sheets, separated by `separator`.
std::string PaperNames(std::string_view separator) {
  std::string names;
  for (const Paper& paper : Papers()) {
    if (!names.empty()) names += separator;
    names += paper.name;
  }
  return names;
}

/// Adds an option that takes any text.
void AddText(CLI::App& command, const std::string& option, std::optional<std::string>& text,
             const std::string& type, const std::string& help) {
  command.add_option(option, text, help)->type_name(type);
}

/// The options that say on what the pages are drawn.
void AddPageOptions(CLI::App& command, const std::shared_ptr<PrintRequest>& request) {
  command
      .add_option_function<std::string>(
          "--paper",
          [request](const std::string& name) {
            const auto paper = FindPaper(name);
            if (!paper) {
              throw CLI::ValidationError("--paper: " + name + " is not one of " + PaperNames(", "));
            }
            request->paper = *paper;
          },
          "the sheet; A4 if not given")
      ->type_name(PaperNames("|"));
  command.add_flag("--landscape", request->landscape, "turn the sheet");
  AddNumber(command, "--dpi", request->resolution,
            WholeNumbers{36, 1200, "a whole number of pixels to the inch from 36 to 1200"},
            "the resolution; 300 if not given")
      ->type_name("PIXELS");
}

/// The options that say what is printed instead of the map.
void AddReportOptions(CLI::App& command, const std::shared_ptr<PrintRequest>& request) {
  static const std::map<std::string, PrintedKind> kinds = {{"trails", PrintedKind::Trails},
                                                           {"index", PrintedKind::Index},
                                                           {"ranges", PrintedKind::Ranges},
                                                           {"profile", PrintedKind::Profile}};
  command
      .add_option_function<std::string>(
          "--report", [request](const std::string& name) { request->kind = kinds.at(name); },
          "a report instead of the map")
      ->type_name("trails|index|ranges|profile")
      ->check(CLI::IsMember({"trails", "index", "ranges", "profile"}));
  command.add_option("--trail", request->trails, "a trail of the report; all if none is given")
      ->type_name("NAME")
      ->allow_extra_args(false);
  command.add_option("--range", request->ranges, "a range of the report; all if none is given")
      ->type_name("NAME")
      ->allow_extra_args(false);
  command.add_option("--transect", request->transect, "the profile from one location to another")
      ->type_name("TEXT TEXT")
      ->expected(2);
  AddNumber(command, "--measure", request->measure,
            WholeNumbers{0, 3, "a whole number from 0 to 3"},
            "what the chart shows: 0 distances, 1 to 3 a count")
      ->type_name("0..3");
  AddFormat(command, [request](CoordinateDisplay format) { request->format = format; });
}

void AddPrint(CommandLine& line) {
  auto request = std::make_shared<PrintRequest>();
  request->paper = Papers().front();
  CLI::App* command = AddMapCommand(line, "print", "Print the map or a report into a PDF file");
  command->add_option("-o,--output", request->output, "the PDF file; - for standard output")
      ->required()
      ->type_name("FILE.pdf");
  AddPageOptions(*command, request);
  AddReportOptions(*command, request);
  command->add_option("--area", request->area, "print what is between these")
      ->type_name("NORTH SOUTH EAST WEST")
      ->expected(4);
  command->add_option("--around", request->around, "print what is around this place")
      ->type_name("LAT LON")
      ->expected(2);
  AddText(*command, "--vertical", request->vertical, "DISTANCE", "at least so far up and down");
  AddText(*command, "--horizontal", request->horizontal, "DISTANCE", "at least so far across");
  AddText(*command, "--scale", request->scale, "1:N", "of the area or around the place");
  AddText(*command, "--rotate", request->rotation, "DEGREES", "turn the map around the place");
  AddText(*command, "--label", request->label, "TEXT", "a line for the legend");
  AddText(*command, "--point-size", request->pointSize, "POINTS", "size of the text; 5");
  AddText(*command, "--grid-color", request->gridColor, "COLOR", "of the grids; #a0a0a0");
  command->callback([&line, request] {
    const std::string wrong = WrongPrintOptions(*request);
    if (!wrong.empty()) throw CLI::ValidationError(wrong);
#ifdef ORVANE_DRAWS
    line.work = [request](Map& map, LineMessages& messages) {
      return PrintCommand(map, messages, *request);
    };
#else
    line.handsOver = true;
#endif
  });
}
#endif

void AddCommands(CommandLine& line) {
  line.app.set_version_flag("--version", std::string("orvane-cli ") + ORVANE_VERSION);
  line.app.require_subcommand(1);
  line.app.add_flag("--european-dates", line.europeanDates, "read the day before the month");
  AddNumber(line.app, "--answer", line.answer, WholeNumbers{1, 3, "a whole number from 1 to 3"},
            "answer every question by the N-th button")
      ->type_name("N");
  line.app.add_flag("--where", line.where, "precede messages by the file and line they are about");
  AddDump(line);
  AddSave(line);
  AddLocate(line);
  AddCheck(line);
  AddTrails(line);
  AddIndex(line);
  AddRanges(line);
  AddEstimates(line);
  AddResiduals(line);
  AddContours(line);
  AddImport(line);
  AddImportFixes(line);
  AddImportGis(line);
  AddPreview(line);
  AddEdit(line);
  AddProfile(line);
  AddExport(line);
#ifdef ORVANE_HAS_RENDER
  AddRender(line);
  AddPrint(line);
#endif
}

int RunCommand(const CommandLine& line) {
  LineMessages messages;
  messages.SetAnswer(line.answer);
  if (line.where) messages.ShowPlaces();
  Workspace workspace(messages);
  workspace.preferences.europeanDates = line.europeanDates;
  const bool isNew = line.makesMap && !std::filesystem::exists(line.mapFile);
  bool readable = isNew;
  Map& map = isNew ? MakeMap(workspace, "Untitled") : OpenMap(workspace, line.mapFile, &readable);
  if (!readable) return ExitFailed;
  const int status = FinishOutput(line.work(map, messages));
#ifdef NDEBUG
  // The system frees the memory at once; taking a large map apart would take long.
  std::fflush(nullptr);
  std::_Exit(status);
#else
  return status;
#endif
}

/// \return the text of the command line library, or a clearer one for an unknown command and for a
///         flag with a value. Other options check their text themselves.
std::string WhatIsWrong(const CLI::App& app, const CLI::ParseError& error) {
  constexpr std::string_view Unclear = "Could not convert: ";
  const std::string_view said = error.what();
  if (said.starts_with(Unclear)) {
    return std::string(said.substr(Unclear.size())) + ": only true and false may be given here";
  }
  const std::vector<std::string> left = app.remaining();
  if (!app.get_subcommands().empty() || left.empty()) return error.what();
  return left.front() + ": no such command";
}

/// \return the arguments, last first. "--name=" gives an option the empty text; the library would
///         miss it, so it gets the name and the text as two arguments.
std::vector<std::string> ReversedArguments(int argc, char** argv) {
  std::vector<std::string> arguments;
  bool options = true;
  for (int i = 1; i < argc; ++i) {
    std::string argument = argv[i];
    options = options && argument != "--";
    if (options && argument.starts_with("--") && argument.find('=') == argument.size() - 1) {
      argument.pop_back();
      arguments.push_back(std::move(argument));
      argument.clear();
    }
    arguments.push_back(std::move(argument));
  }
  std::reverse(arguments.begin(), arguments.end());
  return arguments;
}

/// Ends the program without freeing or allocating memory.
[[noreturn]] void EndOutOfMemory() {
  std::fputs("fatal: out of memory\n", stderr);
  std::_Exit(ExitFatal);
}

/// Replaces the abort of an exception that nothing catches.
[[noreturn]] void EndUnhandled() {
  try {
    if (const std::exception_ptr error = std::current_exception()) std::rethrow_exception(error);
  } catch (const std::bad_alloc&) {
    EndOutOfMemory();
  } catch (...) {  // a bug
    std::abort();
  }
  std::abort();
}

int Main(int argc, char** argv) {
  CommandLine line;
  AddCommands(line);
  try {
    line.app.name(argv[0]);
    line.app.parse(ReversedArguments(argc, argv));
  } catch (const CLI::Success& request) {
    return FinishOutput(line.app.exit(request));  // help or version
  } catch (const CLI::ParseError& error) {
    std::fprintf(stderr, "orvane-cli: %s\n", OneLine(WhatIsWrong(line.app, error)).c_str());
    return ExitUsage;
  }
#ifdef ORVANE_HANDS_OVER
  if (line.handsOver) return HandOver(argv);
#endif
  return RunCommand(line);
}

}  // namespace

}  // namespace orvane

int main(int argc, char** argv) {
  // Memory can also run out in a thread or in a function that must not throw: both call
  // `terminate`.
  std::set_terminate(orvane::EndUnhandled);
  try {
    return orvane::Main(argc, argv);
  } catch (const std::bad_alloc&) {
    orvane::EndOutOfMemory();
  }
}
