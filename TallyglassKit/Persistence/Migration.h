// Steps that bring a database to the present schema, each of them once, recorded in the table
// "grdb_migrations" of the database itself.

#pragma once

#include <span>
#include <string>

namespace tallyglass {

class Connection;

struct Migration {
    std::string identifier; ///< what the record calls it, for good
    std::string sql;        ///< the statements that it consists of
};

/// Runs those that the database doesn't name yet, in order, each in a transaction of its own at whose end
/// foreign keys are checked. A failure rolls its own migration back and leaves those before it. Recorded
/// names that aren't among `migrations` are left alone: they are a newer program's. Several processes may do
/// this to one file at a time. Throws DatabaseError.
void migrate(Connection& connection, std::span<const Migration> migrations);

} // namespace tallyglass
