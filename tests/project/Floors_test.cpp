// The floors of docs/architecture.md, and what each room keeps to itself: read from the sources.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace {
namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>; // a path seen from the project, and what the file holds
using Faults = std::multiset<std::string>;
const std::string page = "docs/architecture.md";

struct Place {
    int floor = -1; // nowhere
    std::string room;
};

/// A source, its header and its forms for other systems (Name_posix.cpp) are one unit.
std::string unitOf(const fs::path& path) {
    const std::string stem = path.stem().string();
    return (path.parent_path() / stem.substr(0, stem.find('_'))).string();
}

struct House {
    const Files& files;
    std::map<std::string, Place> places = {};                 // of the rooms and public headers in the table
    std::map<std::string, std::set<std::string>> arrows = {}; // from unit to unit
    std::map<std::string, bool> classes = {};                 // in public headers: do they have functions?
    std::set<std::string> walked = {};                        // units
    Faults faults = {};

    const Faults& inspect() {
        readTable(files.at(page));
        for (const auto& [path, text] : files) // "include" comes first, and with it the classes
            if (path != page)
                read(path, text);
        for (const auto& arrow : arrows)
            walk(arrow.first, "");
        return faults;
    }

    /// Its rows are | floor | `src/room` | `KXHeader.h`, ... | what it holds |.
    void readTable(const std::string& table) {
        const std::regex row(R"(\| (\d+) \| `(src/[\w/]+)` \|([^|]*)\|)"), header("`(\\w+\\.h)`");
        for (std::sregex_iterator i(table.begin(), table.end(), row), end; i != end; ++i) {
            const std::string headers = i->str(3);
            const Place place = places[i->str(2)] = {std::stoi(i->str(1)), i->str(2)};
            for (std::sregex_iterator j(headers.begin(), headers.end(), header); j != end; ++j)
                places["include/Kobaltrix/" + j->str(1)] = place;
        }
    }

    /// A file stands where the table puts it, or else its nearest folder.
    Place placeOf(fs::path path) const {
        for (; !path.empty(); path = path.parent_path())
            if (const auto place = places.find(path.string()); place != places.end())
                return place->second;
        return {};
    }

    void read(const std::string& path, const std::string& text) {
        // Beside public classes these alone carry the prefix: games know them by their names.
        static const std::set<std::string> modules{"KXTextureCache", "KXMouse", "KXTouch", "KXUIGlobalFont",
                                                   "KXString"};
        static const std::regex include(R"re(^\s*#\s*include\s*[<"]([^>"]+))re"), call(R"(\bglu?[A-Z]\w*\()"),
            definition(R"(^(class|struct) (KX_API )?_?(KX\w+)[^;]*$)");
        const Place here = placeOf(path);
        const bool isPublic = path[0] == 'i';
        const std::string name = fs::path(unitOf(path)).filename().string();
        if (here.floor < 0)
            faults.insert(path + " is in no room of the table");
        if (const auto it = classes.find("KX" + name); !isPublic && it != classes.end() && it->second)
            faults.insert(path + " lacks the prefix of its class");
        if (!isPublic && name.rfind("KX", 0) == 0 && !classes.count(name) && !modules.count(name))
            faults.insert(path + " has the prefix and no class of its name");
        std::istringstream lines(text);
        std::smatch found;
        int number = 0;
        for (std::string line; std::getline(lines, line);) {
            const std::string where = path + ":" + std::to_string(++number) + ": ";
            line.resize(std::min(line.size(), line.find("//")));
            if (line.find("include") != line.npos && std::regex_search(line, found, include))
                follow(path, here, found[1], where + found.str(1));
            else if (here.room != "src/render" && line.find("gl") != line.npos &&
                     std::regex_search(line, call))
                faults.insert(where + "a call of OpenGL is for src/render");
            else if (isPublic && std::regex_search(line, found, definition))
                classes[found[3]] = found[2].matched;
        }
    }

    void follow(const std::string& from, const Place& here, const std::string& name,
                const std::string& what) {
        static const std::regex openGL("GL/.*|OpenGL/gl.*|SDL_opengl.*"),
            system(R"((?!SDL|FTGL/|(limits|stdint|stdio|stdlib|string)\.h).*\.h)"); // not of all systems
        const std::string to = (name.rfind("Kobaltrix/", 0) == 0 ? "include/" : "src/") + name;
        const Place there = placeOf(to);
        if (files.count(to)) {
            if (there.room != here.room && there.floor >= here.floor)
                faults.insert(what + " of " + there.room + " is not below");
            if (unitOf(to) != unitOf(from))
                arrows[unitOf(from)].insert(unitOf(to));
            return;
        }
        const bool draws = std::regex_match(name, openGL);
        const std::string owner = draws ? "src/render" : "src/platform";
        if ((draws || std::regex_match(name, system)) && here.room != owner)
            faults.insert(what + " is for " + owner);
    }

    void walk(const std::string& unit, const std::string& way) {
        if (const auto before = way.find(" " + unit + " "); before != way.npos)
            faults.insert("a circle:" + way.substr(before) + " " + unit);
        else if (walked.insert(unit).second)
            for (const std::string& next : arrows[unit])
                walk(next, way + " " + unit + " ->");
    }
};

TEST(Floors, IncludesPointDownAndRoomsKeepToThemselves) {
    Files files{{page, ""}};
    for (const char* top : {"src", "include"})
        for (const auto& entry : fs::recursive_directory_iterator(fs::path(PROJECT) / top))
            if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h")
                files[fs::relative(entry.path(), PROJECT).string()];
    for (auto& [path, text] : files) {
        std::ifstream file(fs::path(PROJECT) / path);
        text.assign(std::istreambuf_iterator<char>(file), {});
    }
    House house{files};
    for (const std::string& fault : house.inspect())
        ADD_FAILURE() << fault;
    for (const auto& place : house.places)
        EXPECT_TRUE(fs::exists(fs::path(PROJECT) / place.first)) << place.first << " is in the table alone";
    EXPECT_GT(house.places.size(), 50u);
}

TEST(Floors, EachFaultIsNamed) {
    const Files sound{
        {page, "| 0 | `src/platform` | | |\n| 1 | `src/render` | `KXShape.h` | |\n| 1 | `src/time` | | |\n"
               "| 2 | `src/time/roof` | `KXClock.h` | |\n"},
        {"include/Kobaltrix/KXClock.h",
         "#include <Kobaltrix/KXShape.h>\nclass KXSand;\nclass KX_API KXClock {\n"},
        {"include/Kobaltrix/KXShape.h", "#include <stdint.h>\n"},
        {"src/platform/Sleep.h", ""},
        {"src/platform/Sleep_posix.cpp", "#include \"platform/Sleep.h\"\n#include <unistd.h>\n"},
        {"src/render/Line.h", "#include \"render/Point.h\"\n"},
        {"src/render/Point.h", ""},
        {"src/render/Shape.cpp", "#include \"render/Shape.h\"\n#include <SDL_opengl.h>\nglEnd();\n"},
        {"src/render/Shape.h", "#include \"render/Line.h\"\n"},
        {"src/time/Steps.h", "#include \"platform/Sleep.h\"\n// As glFlush() does.\n"},
        {"src/time/roof/KXClock.cpp", "#include <Kobaltrix/KXClock.h>\n#include \"time/Steps.h\"\n"},
    };
    EXPECT_EQ(House{sound}.inspect(), Faults{});

    const struct {
        std::string path, text, fault;
    } cases[] = {
        {"src/time/A.h", "\n# include <Kobaltrix/KXClock.h>",
         "src/time/A.h:2: Kobaltrix/KXClock.h of src/time/roof is not below"},
        {"src/time/A.h", "#include \"render/Line.h\"",
         "src/time/A.h:1: render/Line.h of src/render is not below"},
        {"src/time/A.h", "#include <poll.h>", "src/time/A.h:1: poll.h is for src/platform"},
        {"src/time/A.h", "#include <GL/glu.h>", "src/time/A.h:1: GL/glu.h is for src/render"},
        {"src/time/A.h", "    ::glFlush(); // now", "src/time/A.h:1: a call of OpenGL is for src/render"},
        {"src/time/roof/Clock.cpp", "", "src/time/roof/Clock.cpp lacks the prefix of its class"},
        {"src/time/KXSand.cpp", "", "src/time/KXSand.cpp has the prefix and no class of its name"},
        {"src/Sand.cpp", "", "src/Sand.cpp is in no room of the table"},
        {"src/render/Point.cpp", "#include \"render/Shape.h\"",
         "a circle: src/render/Line -> src/render/Point -> src/render/Shape -> src/render/Line"},
    };
    for (const auto& [path, text, fault] : cases) {
        Files files = sound;
        files[path] = text;
        EXPECT_EQ(House{files}.inspect(), Faults{fault});
    }
}
} // namespace
