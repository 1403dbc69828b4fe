#include "TallyglassKit/Health/HumanizeCamelCase.h"

#include <gtest/gtest.h>

namespace tallyglass {

TEST(HumanizeCamelCase, putsASpaceBeforeEachCapitalButTheFirst) {
    EXPECT_EQ(humanizeCamelCase("fileSize"), "file Size");
    EXPECT_EQ(humanizeCamelCase("ModificationDate"), "Modification Date");
    EXPECT_EQ(humanizeCamelCase("ACLChange"), "A C L Change");
    EXPECT_EQ(humanizeCamelCase(" Size"), "  Size");
}

TEST(HumanizeCamelCase, leavesTextWithoutCapitalsAlone) {
    for (const char* text : {"", "size", "uid 2", "größe", "漢字", "\xFF\xC3"})
        EXPECT_EQ(humanizeCamelCase(text), text);
}

TEST(HumanizeCamelCase, takesALetterWithItsMarksForOneCharacter) {
    EXPECT_EQ(humanizeCamelCase("neÉt"), "ne Ét");
    EXPECT_EQ(humanizeCamelCase("neE\u0301t"), "ne E\u0301t");
    EXPECT_EQ(humanizeCamelCase("nee\u0301t"), "nee\u0301t");
}

TEST(HumanizeCamelCase, countsWhatUnicodeCallsUpperCase) {
    EXPECT_EQ(humanizeCamelCase("aⒶb"), "a Ⓐb");          // circled, without being a letter
    EXPECT_EQ(humanizeCamelCase("a\u01C5b"), "a\u01C5b"); // a title-case digraph is neither
    EXPECT_EQ(humanizeCamelCase("a1-b"), "a1-b");
}

} // namespace tallyglass
