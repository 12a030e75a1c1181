#pragma once

#include <QString>

// Whether the engine forces each write to a database file to the disk (the
// setting a new database has) or leaves it to the system's cache. Raises
// EQ3Exception when the database cannot be opened for it.
void SetQ3TestForcedWrites(const QString &file, bool forced);

// Whether the run asks the tests' database files to leave their writes to the
// system's cache (Q3_TEST_CACHED_WRITES, set for every test by CTest). What a
// test looks at is the same either way: a committed write is in the file for
// every later attachment, and a killed process loses nothing the system has;
// only a power cut could, which no test makes. The forced writes were most of
// the tests' waiting. Run by hand, or from a benchmark, a database forces its
// writes as the application's do.
bool Q3TestWritesCached();
