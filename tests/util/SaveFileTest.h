#pragma once

#include <Kobaltrix/KXSaveFile.h>

#include "core/ground/ErrorSlot.h"
#include "support/TemporaryFolder.h"

#include <Kobaltrix/KXError.h>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

struct SaveFileTest : testing::Test {
    /// Saves a text; empty for success, else what KXError() says behind the path.
    static std::string save(const std::string& path, const std::string& text = "new") {
        _KXClearError();
        KXSaveFile file(path.c_str());
        fwrite(text.data(), 1, text.size(), file.stream());
        const int saved = file.commit();
        const std::string beginning = path + ": cannot be written: ", error = KXError();
        EXPECT_EQ(saved, error.empty() ? -1 : 0);
        EXPECT_TRUE(error.empty() || error.starts_with(beginning)) << error;
        return error.empty() ? "" : error.substr(beginning.size());
    }
    std::ptrdiff_t entries() const {
        return std::distance(fs::directory_iterator(_KXFilePath(folder.path())), fs::directory_iterator());
    }

    const TemporaryFolder folder;
    const std::string old = folder.write("old", "as it was");
};
