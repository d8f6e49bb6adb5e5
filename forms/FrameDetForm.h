#pragma once

#include <functional>
#include <string>

#include "forms/Layout.h"
#include "framework/ui/form.h"

namespace tandrel {

class TCvsObject;
class TFrame_Frm;

/// A form that edits a version-control object: a step of a wizard, a page of the browser, or a
/// dialog of its own. Whoever shows it sets CvsObject and then calls LoadFormData.
class TFrameDetForm : public framework::TForm {
public:
    // The virtual operations stand in the order of their slots; derived classes keep it.

    /// Whether the input is complete.
    virtual bool StatusOk() { return true; }
    /// Copies the object's fields into the controls.
    virtual void LoadFormData() {}
    /// Copies the controls into the object's fields.
    virtual void SaveFormData() {}
    /// The size that the form was designed with, its frame included, in pixels.
    virtual void GetSize(int& height, int& width);
    /// The user goes on to the next step.
    virtual void OnNextForm() {}

    TCvsObject* CvsObject = nullptr;
    /// The result of StatusOk may have changed; with the form and the new result.
    std::function<void(TFrameDetForm& Sender, bool Ok)> OnStatusChange;
    TFrame_Frm* OwnerFrame = nullptr;  ///< The wizard that shows the form, or none.

protected:
    explicit TFrameDetForm(const std::string& caption,
                           framework::TFormBorder border = framework::TFormBorder::Dialog)
        : TForm(caption, border) {}
    /// Sets the size that GetSize tells. @param width, height of the inner area, in design units.
    void SetDesignSize(int width, int height);
    /// The form was designed with the size that it has.
    void KeepDesignSize() { DesignSize_ = {Width(), Height()}; }
    /// Gives the whole form another height, its frame included. @param height in design units.
    void SetFormHeight(int height);

private:
    SIZE DesignSize_{};
};

/// A form whose validity is the enabled state of its "Ok" button, which shows only in a dialog of
/// its own.
class TValidatedForm : public TFrameDetForm {
public:
    bool StatusOk() override;
    /// For a dialog of its own. Call it after LoadFormData, which hides them.
    void ShowButtons(bool visible);

protected:
    explicit TValidatedForm(const std::string& caption) : TFrameDetForm(caption) {}
    /// Ends the form with its buttons, "BitBtn1" and "BitBtn2". @param rows all that is above them.
    void AddButtons(TFormRows& rows);
    /// Enables "Ok", or disables it, and reports.
    void SetValid(bool valid);
    /// Tells OnStatusChange of the present state.
    void ReportStatus();

private:
    framework::TButton* Ok_ = nullptr;
    framework::TButton* Cancel_ = nullptr;
};

}  // namespace tandrel
