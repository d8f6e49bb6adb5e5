#pragma once

#include <windows.h>

#include <functional>
#include <stdexcept>
#include <string>

#include "framework/ui/form.h"
#include "support/ExpectedForms.h"

namespace support {

/// Plays a user step by step, and keeps a transcript. A step fails when it raises, or when forms
/// came that nobody expected, or expected ones did not come.
class TPlay {
public:
    /// @param folder where pictures and "transcript.txt" go; none when empty.
    explicit TPlay(std::string folder);

    /// Plays one step. @return whether it went well.
    bool Step(const std::string& name, const std::function<void()>& action);
    /// Fails the step at hand unless the condition holds.
    void Expect(bool condition, const std::string& what) const {
        if (!condition)
            throw std::runtime_error("not so: " + what);
    }
    /// The next modal form; see TExpectedForms. A picture is taken when it has opened.
    void ExpectForm(const std::string& caption, TExpectedForms::TDrive drive);
    /// Takes a picture of a form as it is now, under a number and its caption.
    void PictureOf(const framework::TForm& form);
    /// Takes a picture of a window into the folder.
    void Picture(HWND window, const std::string& name) const;
    /// Adds to the transcript, and prints.
    void Tell(const std::string& text);

    int Steps() const { return Steps_; }
    int Failed() const { return Failed_; }

private:
    std::string Folder_;
    std::string Transcript_;
    std::string Unexpected_;
    TExpectedForms Forms_;
    int Pictures_ = 0;
    int Steps_ = 0;
    int Failed_ = 0;
};

}  // namespace support
