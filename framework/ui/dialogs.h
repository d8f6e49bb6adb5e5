#pragma once

#include <functional>
#include <string>

#include "framework/api.h"

namespace framework {

/// What is answered to a question that can be given up.
enum class TAnswer { Yes, No, Cancel };

/// The system's own dialogs, as functions that can be replaced by others. Each is modal: no other
/// window of the thread can be used meanwhile. Main thread only.
struct TDialogFunctions {
    /// Lets the user choose a folder. @param directory where to begin; receives the choice, without
    /// a trailing backslash but for a drive's root. False, and `directory` as it was, when the user
    /// gave up.
    std::function<bool(const std::string& title, std::string& directory)> SelectDirectory;

    /// Lets the user choose a file that exists. @param filter pairs of a description and a pattern,
    /// all with "|" between them. @param file what to propose; receives the choice. False, and
    /// `file` as it was, when the user gave up.
    std::function<bool(const std::string& filter, std::string& file)> OpenFile;

    /// As OpenFile, for a file to write: asks before one that exists is taken. @param file may be a
    /// folder with a trailing backslash, to begin there. Without an ending it gets the one of the
    /// filter's first pattern.
    std::function<bool(const std::string& filter, std::string& file)> SaveFile;

    /// A question that is answered with Yes or No.
    std::function<bool(const std::string& caption, const std::string& text)> AskYesNo;

    /// As AskYesNo, but the user can also give up what led to it, with Escape as well.
    std::function<TAnswer(const std::string& caption, const std::string& text)> AskYesNoCancel;

    /// As AskYesNo, with a warning's picture and No as what Enter chooses: for what could harm.
    std::function<bool(const std::string& caption, const std::string& text)> AskRisk;
};

/// The functions that the process uses, to be called or replaced.
FRAMEWORK_API TDialogFunctions& DialogFunctions();

}  // namespace framework
