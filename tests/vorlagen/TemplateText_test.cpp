#include "vorlagen/TemplateText.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

TEST(TemplateText, TemplateFromText_RefusesOtherFormsWithTheLine) {
    struct Case {
        const char* text;
        const char* refusal;
    };
    for (const Case& wrong : {
             Case{"", "no profile in it"},
             Case{"# only a comment\n", "no profile in it"},
             Case{"    A\n", "line 1: more than one level down"},
             Case{"A\n        B\n", "line 2: more than one level down"},
             Case{"A\n  B\n", "line 2: indented by half a level"},
             Case{"A\nB\n", "line 2: a second profile"},
             Case{"A\n\n    ยท\n", "line 3: a character that the code page does not have"},
             Case{"A\n    \xFF\n", "line 2: no character of the code page"},
             Case{"A\n    \xC3\n", "line 2: no UTF-8"},
             Case{"A\n    B\t| C\n", "line 2: a tab or carriage return"},
             Case{"| A\n", "line 1: nothing to carry on"},
             Case{"A\n    B\n    | C\n", "line 3: nothing to carry on"},
         }) {
        try {
            TemplateFromText(wrong.text);
            ADD_FAILURE() << "accepted: " << wrong.text;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), wrong.refusal);
        }
    }
}
