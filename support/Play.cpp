#include "support/Play.h"

#include <fcntl.h>
#include <io.h>

#include <cctype>
#include <cstdio>
#include <utility>

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

void TPlay::ExpectForm(const std::string& caption, TExpectedForms::TDrive drive) {
    Forms_.Expect(caption, [this, drive = std::move(drive)](framework::TForm& form) {
        PictureOf(form);
        drive(form);
    });
}

void TPlay::PictureOf(const framework::TForm& form) {
    std::string name = form.Text();
    for (char& character : name)
        if (!std::isalnum(static_cast<unsigned char>(character)))
            character = '-';
    const std::string number = std::to_string(1000 + ++Pictures_).substr(1);
    Picture(form.Handle(), "forms\\" + number + "-" + name);
}

void TPlay::Picture(HWND window, const std::string& name) const {
    if (!Folder_.empty())
        SaveScreenshot(window, Folder_ + "\\" + name + ".png");
}

}  // namespace support
