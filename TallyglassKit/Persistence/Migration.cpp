#include "TallyglassKit/Persistence/Migration.h"

#include "TallyglassKit/Persistence/Connection.h"

namespace tallyglass {

namespace {

bool isApplied(Connection& connection, const Migration& migration) {
    const Query query = connection.query("SELECT 1 FROM grdb_migrations WHERE identifier = ?");
    query->bindText(1, migration.identifier);
    return query->step();
}

void apply(Connection& connection, const Migration& migration) {
    Transaction transaction(connection, Transaction::Kind::write);
    if (isApplied(connection, migration)) // by another process, while this one waited for the lock
        return;
    connection.execute("PRAGMA defer_foreign_keys = ON"); // until the end of this transaction
    connection.execute(migration.sql);
    const Query record = connection.query("INSERT INTO grdb_migrations (identifier) VALUES (?)");
    record->bindText(1, migration.identifier);
    record->run();
    transaction.commit();
}

} // namespace

void migrate(Connection& connection, std::span<const Migration> migrations) {
    connection.execute("CREATE TABLE IF NOT EXISTS grdb_migrations (identifier TEXT NOT NULL PRIMARY KEY)");
    for (const Migration& migration : migrations)
        if (!isApplied(connection,
                       migration)) // without a lock, as others may be writing
            apply(connection, migration);
}

} // namespace tallyglass
