#pragma once

#include "Q3Connection.h"

#include <QByteArray>

#include <cstdint>

// Creates an empty database (character set UTF8) through the Firebird client
// library; raises EQ3Exception with Firebird's message on failure.
Q3_EXPORT void CreateQ3Database(const TQ3DatabaseTarget &target);

// The database the next start opens when none is named, as the user chose it
// (a restored one); empty when never chosen. Kept in quillo3.ini of the user's
// data folder.
Q3_EXPORT QString Q3DatabaseAllAvvio();
Q3_EXPORT void ImpostaQ3DatabaseAllAvvio(const QString &database);

// Turns off the automatic sweep of a database (its sweep interval to 0), as
// the owner may. Firebird 3.0.11, after a workstation was ended in the middle
// of a save, can make records of that save, or records deleted long before,
// visible again when an automatic sweep starts some twenty thousand
// transactions later; the garbage is collected by the readers and by every
// backup all the same. Raises EQ3Exception on failure.
Q3_EXPORT void DisableQ3AutomaticSweep(const TQ3DatabaseTarget &target);

// Drops a database; raises EQ3Exception on failure.
Q3_EXPORT void DropQ3Database(const TQ3DatabaseTarget &target);

// True when the target is an embedded database file that does not exist yet.
Q3_EXPORT bool Q3DatabaseFileMissing(const TQ3DatabaseTarget &target);

// The parameters of an attachment to the target (user, password, UTF8), as
// the Firebird client library takes them.
Q3_EXPORT QByteArray Q3AttachParameters(const TQ3DatabaseTarget &target);

// Firebird's own text for a client library status vector.
Q3_EXPORT QString Q3FirebirdStatusText(const std::intptr_t *status);
