// The tree of a file's revisions, beside which they are shown.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <random>
#include <set>

#include "workbench/LogNames.h"
#include "workbench/RevisionNumbers.h"
#include "workbench/RevisionTree.h"

namespace {

using namespace workbench;

/// A log with these revisions, "number day".
TFileLog LogWith(const std::vector<std::pair<std::string, int>>& revisions) {
    TFileLog log;
    for (const auto& [number, day] : revisions)
        log.Revisions.push_back({number, 40000.0 + day, "me", "Exp"});
    return log;
}

std::vector<std::size_t> All(const TFileLog& log) {
    std::vector<std::size_t> all(log.Revisions.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

/// A line for each row: in each lane "|" for a line that passes, "/" for one that ends there, "*"
/// for the revision, or "^" and "v" where its own line only comes or goes.
std::vector<std::string> Draw(const TFileLog& log, const std::vector<std::size_t>& revisions) {
    const TRevisionTree tree = LayOut(log, revisions);
    std::vector<std::string> rows;
    for (const TTreeRow& row : tree.Rows) {
        std::string text(static_cast<std::size_t>(tree.Lanes), ' ');
        for (int lane = 0; lane < tree.Lanes; ++lane) {
            const TLanes bit = TLanes{1} << lane;
            EXPECT_NE(row.Through & row.Ending & bit, bit);
            text[static_cast<std::size_t>(lane)] = row.Through & bit  ? '|'
                                                   : row.Ending & bit ? '/'
                                                                      : ' ';
        }
        text[static_cast<std::size_t>(row.Lane)] = row.Above && row.Below ? '*'
                                                   : row.Above            ? '^'
                                                   : row.Below            ? 'v'
                                                                          : 'o';
        rows.push_back(text + " " + log.Revisions[row.Revision].Number);
    }
    return rows;
}

TEST(RevisionTrees, ShowBranchesBesideTheTrunk) {
    using Rows = std::vector<std::string>;
    const TFileLog log = LogWith({{"1.4", 9},
                                  {"1.3", 5},
                                  {"1.2", 3},
                                  {"1.1", 1},
                                  {"1.1.1.1", 1},
                                  {"1.2.4.1", 4},
                                  {"1.2.2.2", 8},
                                  {"1.2.2.1", 6},
                                  {"1.2.2.1.2.1", 7}});
    EXPECT_EQ(Draw(log, All(log)),
              (Rows{"v   1.4", "|v  1.2.2.2", "||v 1.2.2.1.2.1", "|*/ 1.2.2.1", "*|  1.3",
                    "||v 1.2.4.1", "*// 1.2", "|v  1.1.1.1", "^/  1.1"}));
    // Some of them alone: the lines go on to what is there of them.
    EXPECT_EQ(Draw(log, {0, 2, 5, 6}), (Rows{"v   1.4", "|v  1.2.2.2", "||v 1.2.4.1", "^// 1.2"}));
    EXPECT_EQ(Draw(log, {4, 6, 7}), (Rows{"v 1.2.2.2", "^ 1.2.2.1", "o 1.1.1.1"}));
    EXPECT_TRUE(Draw(log, {}).empty());
    // A clock that was wrong turns nothing upside down, and a trunk goes on with 2.
    const TFileLog wrong = LogWith({{"2.1", 2}, {"1.2", 9}, {"1.1", 5}, {"1.2.2.1", 1}});
    EXPECT_EQ(Draw(wrong, All(wrong)), (Rows{"v  2.1", "|v 1.2.2.1", "*/ 1.2", "^  1.1"}));
}

TEST(RevisionTrees, AreWholeWhateverTheHistory) {
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        std::vector<TRevisionNumber> made = {{1, 1}};
        std::map<TRevisionNumber, int> branches;
        TFileLog log = LogWith({{"1.1", 0}});
        // In the last rounds more branches at a time than there are lanes.
        const unsigned branchy = round < 50 ? 4 : 2;
        for (int day = 1; day < 20 + 5 * round; ++day) {
            TRevisionNumber number = made[random() % made.size()];
            if (random() % branchy == 0) {
                const int branch = branches[number] += 2;
                number.insert(number.end(), {branch, 1});
            } else {
                do
                    ++number.back();
                while (std::ranges::find(made, number) != made.end());
            }
            made.push_back(number);
            log.Revisions.push_back(
                {TextOf(number), 40000.0 + static_cast<double>(random() % 300), "me", "Exp"});
        }
        const TRevisionTree tree = LayOut(log, All(log));
        ASSERT_EQ(tree.Rows.size(), log.Revisions.size());
        EXPECT_LE(tree.Lanes, MostLanes);
        const auto before = RevisionsBefore(made);
        std::set<std::size_t> shown;
        TLanes open = 0;
        for (const TTreeRow& row : tree.Rows) {
            const TLanes own = TLanes{1} << row.Lane;
            EXPECT_TRUE(shown.insert(row.Revision).second);
            EXPECT_EQ(row.Below, before[row.Revision].has_value());
            // Each line goes on where it came from, from row to row.
            EXPECT_EQ((open & own) != 0 || row.Lane == MostLanes - 1,
                      row.Above || row.Lane == MostLanes - 1);
            EXPECT_EQ(open | own, row.Through | row.Ending | own);
            open = row.Through | (row.Below ? own : 0);
            EXPECT_FALSE(before[row.Revision] && shown.contains(*before[row.Revision]));
        }
        EXPECT_EQ(open, 0u);
    }
}

TEST(LogNames, AreThoseOfBranchesAndLabels) {
    TFileLog log =
        LogWith({{"1.2", 5}, {"1.1", 1}, {"1.1.2.2", 4}, {"1.1.2.1", 3}, {"1.1.4.1", 2}});
    log.Labels = {{"LATE", "1.2"}, {"TWIG", "1.1.0.2"}, {"EMPTY", "1.2.0.2"},   {"EARLY", "1.1"},
                  {"SAME", "1.1"}, {"VENDOR", "1.1.1"}, {"ON_TWIG", "1.1.2.1"}, {"GONE", "1.9"}};
    EXPECT_EQ(BranchesOf(log), (std::vector<std::string>{"", "", "TWIG", "TWIG", "1.1.4"}));
    std::vector<std::string> labels;
    for (const auto& positions : LabelsOfRevisions(log)) {
        labels.emplace_back();
        for (const std::size_t at : positions)
            labels.back() += log.Labels[at].Name + " ";
    }
    EXPECT_EQ(labels, (std::vector<std::string>{"LATE EMPTY ", "EARLY SAME VENDOR ", "TWIG ",
                                                "ON_TWIG ", ""}));
    EXPECT_EQ(FirstOf({"A", "B", "C"}, 3), "A, B, C");
    EXPECT_EQ(FirstOf({"A", "B", "C", "D"}, 2), "A, B and 2 more");
    EXPECT_EQ(FirstLineOf("\n\nfirst\nsecond"), "first");
    EXPECT_EQ(FirstLineOf("\n"), "");
}

}  // namespace
