#include "TallyglassKit/Persistence/FullText.h"

#include "TallyglassKit/Persistence/Connection.h"
#include "TallyglassKit/Persistence/DatabaseError.h"

#include <sqlite3.h>

#include <functional>
#include <limits>
#include <memory>

namespace tallyglass {

namespace {

using StatementHandle = std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)>;
using TokenizerHandle = std::unique_ptr<Fts5Tokenizer, std::function<void(Fts5Tokenizer*)>>;

/// The table of FTS5's functions, which the SQL function fts5() stores where its argument points.
fts5_api& fullTextInterface(Connection& connection) {
    sqlite3_stmt* statement = nullptr;
    if (const int code = sqlite3_prepare_v2(connection.handle(), "SELECT fts5(?)", -1, &statement, nullptr);
        code != SQLITE_OK)
        connection.fail(code);
    const StatementHandle owner(statement, &sqlite3_finalize);
    fts5_api* result = nullptr;
    sqlite3_bind_pointer(statement, 1, static_cast<void*>(&result), "fts5_api_ptr", nullptr);
    if (const int code = sqlite3_step(statement); code != SQLITE_ROW)
        connection.fail(code);
    if (!result)
        throw DatabaseError(SQLITE_ERROR, "no such module: fts5");
    return *result;
}

int collectToken(void* tokens, int flags, const char* token, int length, int, int) {
    if (!(flags & FTS5_TOKEN_COLOCATED))
        static_cast<std::vector<std::string>*>(tokens)->emplace_back(token, static_cast<std::size_t>(length));
    return SQLITE_OK;
}

} // namespace

std::vector<std::string> asciiTokens(Connection& connection, std::string_view text) {
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw DatabaseError(SQLITE_TOOBIG, sqlite3_errstr(SQLITE_TOOBIG));
    fts5_api& api = fullTextInterface(connection);
    const auto check = [](int code) {
        if (code != SQLITE_OK)
            throw DatabaseError(code, sqlite3_errstr(code));
    };
    void* context = nullptr;
    fts5_tokenizer tokenizer{};
    check(api.xFindTokenizer(&api, "ascii", &context, &tokenizer));
    Fts5Tokenizer* instance = nullptr;
    check(tokenizer.xCreate(context, nullptr, 0, &instance));
    const TokenizerHandle owner(instance, tokenizer.xDelete);

    std::vector<std::string> tokens;
    check(tokenizer.xTokenize(instance, &tokens, FTS5_TOKENIZE_QUERY, text.data(),
                              static_cast<int>(text.size()), &collectToken));
    return tokens;
}

} // namespace tallyglass
