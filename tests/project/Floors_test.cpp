// The floors of docs/architecture.md, and what each room keeps to itself: read from the sources.

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace {
namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>; // a path seen from the project, and what the file holds
using Faults = std::multiset<std::string>;
const std::string page = "docs/architecture.md";

/// A source, its header and its forms for other systems (Name_posix.cpp) are one unit.
std::string unitOf(const std::string& path) {
    static const std::regex ending("(_\\w+)?\\.\\w+$");
    return std::regex_replace(path, ending, "");
}

struct House {
    const Files& files;
    std::map<std::string, std::string> rooms = {};  // where the table puts folders and public headers
    std::map<std::string, int> floors = {{"", -1}}; // of the rooms
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

    void note(bool isFault, const std::string& fault) {
        if (isFault)
            faults.insert(fault);
    }

    /// Its rows are | floor | `src/room` | `KXHeader.h`, ... | what it holds |.
    void readTable(const std::string& table) {
        const std::regex row(R"(\| (\d+) \| `(src/[\w/]+)` \|([^|]*)\|)"), header("`(\\w+\\.h)`");
        for (std::sregex_iterator i(table.begin(), table.end(), row), end; i != end; ++i) {
            const std::string room = rooms[i->str(2)] = i->str(2), headers = i->str(3);
            floors[room] = std::stoi(i->str(1));
            for (std::sregex_iterator j(headers.begin(), headers.end(), header); j != end; ++j)
                rooms["include/Kobaltrix/" + j->str(1)] = room;
        }
    }

    /// The room of a file is its own, or else its nearest folder's; empty if it has none.
    std::string roomOf(const fs::path& path) const {
        const auto room = rooms.find(path.generic_string());
        return room != rooms.end() ? room->second : path.empty() ? "" : roomOf(path.parent_path());
    }

    void read(const std::string& path, const std::string& text) {
        // Beside public classes these alone carry the prefix: games know them by their names.
        static const std::regex modules("KX(Mouse|String|TextureCache|Touch|UIGlobalFont)"),
            include(R"re(^\s*#\s*include\s*[<"]([^>"]+))re"), call(R"(\bglu?[A-Z]\w*\()"),
            definition(R"(^(class|struct) (KX_API )?_?(KX\w+)[^;]*$)");
        const std::string name = unitOf(fs::path(path).filename().string()), room = roomOf(path);
        note(room.empty(), path + " is in no room of the table");
        const bool isPublic = path[0] == 'i', hasPrefix = name.rfind("KX", 0) == 0;
        note(!isPublic && classes.count("KX" + name) && classes.at("KX" + name),
             path + " lacks the prefix of its class");
        note(!isPublic && hasPrefix && !classes.count(name) && !std::regex_match(name, modules),
             path + " has the prefix and no class of its name");
        std::istringstream lines(text);
        std::smatch found;
        int number = 0;
        for (std::string line; std::getline(lines, line);) {
            const std::string where = path + ":" + std::to_string(++number) + ": ";
            line = line.substr(0, line.find("//"));
            if (line.find("include") != line.npos && std::regex_search(line, found, include))
                follow(path, found[1], where + found.str(1));
            note(room != "src/render" && line.find("gl") != line.npos && std::regex_search(line, call),
                 where + "a call of OpenGL is for src/render");
            if (isPublic && std::regex_search(line, found, definition))
                classes[found[3]] = found[2].matched;
        }
    }

    void follow(const std::string& from, const std::string& name, const std::string& what) {
        static const std::regex openGL("GL/.*|OpenGL/gl.*|SDL_opengl.*");
        static const std::regex system( // what not all systems have
            R"((?!SDL|FTGL/|freetype/|fontconfig/)"
            R"(|(hb|hb-ft|hb-ot|fribidi|linebreak|limits|stdint|stdio|stdlib|string|zlib|zstd)\.h).*\.h)");
        const std::string to = (name.rfind("Kobaltrix/", 0) == 0 ? "include/" : "src/") + name;
        const std::string here = roomOf(from), there = roomOf(to);
        if (files.count(to)) {
            note(there != here && floors[there] >= floors[here], what + " of " + there + " is not below");
            if (unitOf(to) != unitOf(from))
                arrows[unitOf(from)].insert(unitOf(to));
        } else if (std::regex_match(name, openGL))
            note(here != "src/render", what + " is for src/render");
        else if (std::regex_match(name, system))
            note(here != "src/platform", what + " is for src/platform");
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
    const fs::path project = PROJECT;
    Files files = {{page, contentOf((project / page).string())}};
    for (const char* top : {"src", "include"})
        for (const fs::path& path : fs::recursive_directory_iterator(project / top))
            if (path.extension() == ".cpp" || path.extension() == ".h")
                files[fs::relative(path, project).generic_string()] = contentOf(path.string());
    House house{files};
    EXPECT_EQ(house.inspect(), Faults{});
    for (const auto& [place, room] : house.rooms)
        EXPECT_TRUE(fs::exists(project / place)) << place << " is in the table alone";
    EXPECT_GT(house.rooms.size(), 50u);
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

    const char* const cases[][3] = {
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
