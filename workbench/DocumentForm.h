#pragma once

#include <functional>
#include <string>

#include "framework/ui/form.h"
#include "framework/ui/menus.h"
#include "framework/ui/rich_edit.h"
#include "hosting/Recovery.h"

namespace workbench {

/// A window with a text: a file, or something new. A file that would not come back byte for byte is
/// only shown.
class TDocumentForm : public framework::TForm {
public:
    /// The largest text that a window takes, in bytes: the control needs many times its memory.
    static constexpr std::size_t MostBytes = 8 << 20;

    /// A new text, which is nothing to save until the user changes it. @param folder where it would
    /// be saved. Of a text that is too large the first part is shown.
    TDocumentForm(const std::string& caption, const std::string& text, const std::string& folder);
    /// A file. Raises framework::EInOutError when it cannot be read, framework::Exception when it
    /// is larger than MostBytes.
    explicit TDocumentForm(const std::string& path);

    /// Empty for a text that has no file yet.
    const std::string& Path() const { return Path_; }
    bool Modified() const { return Modified_; }
    /// Writes the text; asks for a file when there is none, and before it writes over what somebody
    /// else has written meanwhile. False when the user gave up. Raises framework::EInOutError.
    bool Save();
    /// The file is another one from now on, with the same text.
    void MovedTo(const std::string& path);
    /// What would be lost now.
    hosting::TUnsavedText Unsaved() const;
    /// Shows the file as it is now, unless the user has changed the text.
    void Reload();
    /// Asks whether changes are to be saved. False when the user gave up; with No they stay.
    bool AskToSave();
    /// Asks whether changes are to be saved, and hides the form: its owner frees it. It stays when
    /// the user gives up.
    void Close() { CloseQuery(); }

    /// The file was written.
    std::function<void(const std::string& path)> OnSaved;

protected:
    void CloseQuery() override;

private:
    void AddControls();
    void Load(const std::string& bytes);
    void AddConflictMenu();
    void ShowCaption(const std::string& remark = {});
    /// Selects the next conflict, or the one before; tells when there is none.
    void TurnToConflict(bool next);
    /// Puts what is to stay in the place of the conflict at hand, and turns to the next.
    void Resolve(bool mine, bool theirs);
    std::string Bytes() const;

    std::string Path_;
    std::string Title_;
    std::string Folder_;      // where a new text would be saved
    std::string OnDisk_;      // the file as it was read or written last
    bool UnixLines_ = false;  // lines end in LF alone
    bool Modified_ = false;
    bool Loading_ = false;
    framework::TMainMenu* Menu_;
    framework::TMemo* Memo1_;
};

}  // namespace workbench
