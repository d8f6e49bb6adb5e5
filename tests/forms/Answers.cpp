#include "tests/forms/Answers.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "framework/ui/list_view.h"
#include "support/Drive.h"
#include "tests/support/FormDriver.h"

namespace tests {

using support::Part;
using support::Press;

void ExpectResult(const std::string& caption, const std::string& text) {
    ExpectForm(caption, [text](framework::TForm& form) {
        EXPECT_EQ(TextOf(form, "Label1"), text);
        Press(form, "BitBtn1");
    });
}

void SelectRow(framework::TForm& form, const std::string& caption) {
    auto& list = Part<framework::TListView>(form, "ListView1");
    for (int i = 0; i < list.Count(); ++i)
        if (list.Row(i).Caption == caption)
            return list.Select(i);
    std::string rows;
    for (int i = 0; i < list.Count(); ++i)
        rows += list.Row(i).Caption + "\n";
    throw std::runtime_error("There is no row " + caption + " among these:\n" + rows);
}

void ExpectChoice(const std::string& caption, const std::string& row) {
    ExpectForm(caption, [row](framework::TForm& form) {
        SelectRow(form, row);
        Press(form, "BitBtn1");
    });
}

}  // namespace tests
