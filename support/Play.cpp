#include "support/Play.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>

#include "support/Files.h"
#include "support/Screenshot.h"

namespace support {

TPlay::TPlay(std::string folder) : Folder_(std::move(folder)) {
    // The texts have their line ends already.
    ::_setmode(::_fileno(stdout), _O_BINARY);
    Forms_.OnUnexpected = [this](const std::string& caption) {
        Unexpected_ += "nobody expected the form \"" + caption + "\"; ";
    };
    Forms_.Install();
}

void TPlay::Tell(const std::string& text) {
    Transcript_ += text;
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
    if (!Folder_.empty())
        WriteBytes(Folder_ + "\\transcript.txt", Transcript_);
}

bool TPlay::Step(const std::string& name, const std::function<void()>& action) {
    Tell("\r\n=== " + std::to_string(++Steps_) + ". " + name + "\r\n");
    std::string error;
    try {
        action();
    } catch (const std::exception& raised) {
        error = raised.what();
    }
    for (const std::string& caption : Forms_.TakeMissing())
        error += "; the form \"" + caption + "\" never came";
    if (!Unexpected_.empty())
        error += "; " + Unexpected_;
    Unexpected_.clear();
    if (!error.empty())
        ++Failed_;
    Tell(error.empty() ? "=== ok\r\n" : "=== FAILED: " + error + "\r\n");
    return error.empty();
}

void TPlay::Picture(HWND window, const std::string& name) const {
    if (!Folder_.empty())
        SaveScreenshot(window, Folder_ + "\\" + name + ".png");
}

}  // namespace support
