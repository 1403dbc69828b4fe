// Steps that bring a database to the current schema, each applied once and recorded in the table
// "grdb_migrations" of the database itself.

#pragma once

#include <span>
#include <string>

namespace tallyglass {

class Connection;

struct Migration {
    std::string identifier; ///< its recorded name, which never changes
    std::string sql;        ///< its statements
};

/// Applies those that aren't recorded in the database yet, in order, each in its own transaction, at whose
/// end foreign keys are checked. A failure rolls back its own migration and keeps the earlier ones. Recorded
/// names that aren't among `migrations`, from a newer version of the program, are ignored. Several processes
/// may migrate one file at a time. Throws DatabaseError.
void migrate(Connection& connection, std::span<const Migration> migrations);

} // namespace tallyglass
