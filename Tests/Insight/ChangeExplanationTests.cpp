#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Insight/ChangeExplanation.h"
#include "TallyglassKit/Insight/StorageTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <random>

namespace tallyglass::test {
namespace {

using Rows = std::vector<ChangeRecord>;

constexpr std::int64_t megabyte = 1'000'000;
const UserLocale english{"en_US", "UTC"};

/// The path changed by so many megabytes.
ChangeRecord grown(std::string path, std::int64_t megabytes) {
    return {std::nullopt, "c",          std::move(path),      ChangeKind::modified,
            false,        std::nullopt, megabytes * megabyte, std::nullopt};
}

ChangeExplanation explain(const Rows& rows) {
    return ChangeExplanation::explain(StorageTree::build(rows), english);
}

Rows many(const std::string& folder, int count, std::int64_t megabytes) {
    Rows rows;
    for (int index = 0; index < count; ++index)
        rows.push_back(grown(folder + "/" + std::to_string(index) + "/file", megabytes));
    return rows;
}

Rows operator+(Rows left, const Rows& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

TEST(ChangeExplanation, saysInOneSentenceWhereTheChangeIs) {
    const Rows movies = many("/Users/anna/Movies/Raw", 10, 800);
    const Rows spread = many("/Users/anna/Library", 1000, 4) + many("/Users/bob", 1000, 4);
    const std::vector<std::pair<Rows, std::string>> cases{
        {{}, "Nothing changed."},
        {{grown("/a", 0)}, "One change, which makes no difference in size."},
        {many("/a", 1200, 0), "1,200 changes, none of which makes a difference in size."},
        {{grown("/Users/anna/film.mov", 4200)}, "4.2 GB changed, all of it in /Users/anna/film.mov."},
        {{grown("/Users/anna/film.mov", 96), grown("/b", 4)},
         "100 MB changed, nearly all of it in /Users/anna/film.mov (96 %)."},
        {movies, "8 GB changed, all of it in /Users/anna/Movies/Raw."},
        {movies + many("/Users/anna", 900, 5),
         "12.5 GB changed, most of it in /Users/anna/Movies/Raw (64 %)."},
        {movies +
             Rows{grown("/Users/anna/Library/Caches/x", 2000), grown("/Users/bob/y", 1500), grown("/z", 1)},
         "11.5 GB changed, all of it in three places under /Users: 8 GB in anna/Movies/Raw (70 %), 2 "
         "GB in "
         "anna/Library/Caches/x (17 %) and 1.5 GB in bob/y (13 %)."},
        {Rows{grown("/a/x", 61), grown("/b/y", -30), grown("/c", 2)} + many("/d", 2, 2) + many("/e", 3, 1),
         "100 MB changed, nearly all of it in two places: 61 MB in /a/x (61 %) and 30 MB in /b/y (30 %)."},
        {spread, "8 GB changed, all of it in two places under /Users: 4 GB in anna/Library (50 %) and 4 GB "
                 "in bob (50 %)."},
        {many("", 2000, 1), "2 GB changed, spread over 2,000 items so that no place stands out."},
        {{grown("/old", -500), grown("/new", 520)},
         "1.02 GB changed, all of it in two places: 520 MB in /new (51 %) and 500 MB in /old (49 %), yet the "
         "backup grew by only 20 MB."},
        {{grown("/old", -50), grown("/old", 50)},
         "100 MB changed, all of it in /old, yet the backup is as large as before."},
    };
    for (const auto& [rows, sentence] : cases)
        EXPECT_EQ(explain(rows).sentence, sentence);
}

TEST(ChangeExplanation, namesPlacesWithTheirSharesByThePathsOfTheTree) {
    const auto explanation = explain({grown("/a/b/x", 30), grown("/a/b/x", -30), grown("/a/c", 40)});

    EXPECT_EQ(explanation.magnitude, 100 * megabyte);
    EXPECT_EQ(explanation.netBytes, 40 * megabyte);
    EXPECT_EQ(explanation.changeCount, 3);
    EXPECT_THAT(explanation.places,
                testing::ElementsAre(ChangeExplanation::Place{"/a/b/x", 60 * megabyte, 0, 2, 0.6},
                                     ChangeExplanation::Place{"/a/c", 40 * megabyte, 40 * megabyte, 1, 0.4}));
}

TEST(ChangeExplanation, namesNoPlaceWithinAnotherAndMostOfTheChange) {
    std::mt19937 random(3);
    const auto below = [&](int bound) { return std::uniform_int_distribution(0, bound - 1)(random); };
    for (int round = 0; round < 2000; ++round) {
        Rows rows;
        for (int count = below(40); count >= 0; --count) {
            std::string path;
            for (int depth = below(6); depth >= 0; --depth)
                path += "/" + std::to_string(below(3));
            rows.push_back(grown(path, below(3) ? below(10) : below(1000)));
        }
        const auto places = explain(rows).places;

        EXPECT_LE(places.size(), 3U);
        EXPECT_TRUE(std::ranges::is_sorted(places, std::greater(), &ChangeExplanation::Place::magnitude));
        const auto share = std::accumulate(places.begin(), places.end(), 0.0,
                                           [](double sum, const auto& place) { return sum + place.share; });
        EXPECT_TRUE(places.empty() || (share > 0.5 && share < 1 + 1e-9)) << share;
        for (const auto& place : places)
            for (const auto& other : places)
                EXPECT_FALSE(other.path.starts_with(place.path + "/")) << place.path << " " << other.path;
    }
}

} // namespace
} // namespace tallyglass::test
