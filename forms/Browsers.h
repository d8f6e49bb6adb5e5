#pragma once

#include <string>
#include <vector>

#include "forms/Frames.h"
#include "framework/ui/page_control.h"

namespace tandrel {

/// Hosts forms on its two pages: the first form on the first, all others on the second.
class TBrowser_Form : public framework::TForm {
public:
    explicit TBrowser_Form(const std::string& caption);
    ~TBrowser_Form() override;

    /// Makes a form, loads it and shows it on its page; the window grows to its size.
    void AddTabs(const TFrameDetFormClass& formClass, TCvsObject& cvs);

private:
    std::vector<TFrameDetForm*> Forms_;  // the application's; freed with the window
    framework::TPageControl* PageControl1_;
    framework::TTabSheet* TabSheet1_;
    framework::TTabSheet* TabSheet2_;
};

/// Shows forms until the user closes the window. @return true only for the result "Ok".
bool Show_Browser(const std::string& caption, const std::vector<TFrameDetFormClass>& formClasses,
                  TCvsObject& cvs);

}  // namespace tandrel
