#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hosting/Recovery.h"
#include "workbench/DocumentForm.h"

namespace workbench {

/// The windows with texts that are open. Main thread only.
class TDocuments {
public:
    TDocuments() = default;
    /// Closes all of them without a question.
    ~TDocuments();
    TDocuments(const TDocuments&) = delete;
    TDocuments& operator=(const TDocuments&) = delete;

    /// Shows a file, in the window that it is in already or in a new one. Raises
    /// framework::Exception when it cannot be read, or is larger than a window takes.
    void Open(const std::string& path);
    /// Shows a new text. @param folder where it would be saved.
    void OpenNew(const std::string& caption, const std::string& text, const std::string& folder);
    /// The file has another name now.
    void Moved(const std::string& from, const std::string& to);
    /// Shows what has become of the files, unless the user has changed their texts. @return what
    /// could not be read, a line for each.
    std::string Reload();
    /// Asks for each changed text whether it is to be saved. False when the user gave up.
    bool Save();
    /// Closes all; false when the user gave up at one that is not saved.
    bool Close();
    std::vector<hosting::TUnsavedText> Unsaved() const;

    /// A file was written from its window.
    std::function<void(const std::string& path)> OnSaved;

private:
    TDocumentForm* Find(const std::string& path) const;
    TDocumentForm& Keep(TDocumentForm& document);
    void ForgetClosed();

    std::vector<TDocumentForm*> Open_;  // the application's
};

}  // namespace workbench
