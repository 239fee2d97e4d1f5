#pragma once

class QDir;
class QString;

// Every routine may run on any thread, reports by its result only and says nothing to the user.

/// Copies all files under `source`, hidden ones too, to the same relative paths under `target`,
/// over whatever files are there. Directories come into being as files need them, so an empty one
/// is not reproduced; links to directories are not entered. What was copied is on the disk and not
/// only on its way there. Stops at the first failure, a directory that can't be read among them,
/// which leaves what was copied so far. True for a `source` without files.
bool copyDirectory(const QString &source, const QString &target);

/// Makes the directory `path` with its missing parents. Whether that worked, `exists()` tells.
QDir makeDirectory(const QString &path);

/// Moves a file in one step: the target is the old file or the whole new one at every moment.
/// Without `replaceExisting` an existing target makes it fail. A failure leaves both files alone.
bool moveFile(const QString &source, const QString &target, bool replaceExisting);

/// Deletes the directory `path` with all in it, or the link in its place. Links, in it as well, go
/// without what they point at. A missing one is a success. Stops at the first failure, after which
/// some of the files may be gone, those of subdirectories first.
bool removeTree(const QString &path);

/// A name in the system's temporary folder that nobody has just now. The file doesn't exist, and
/// where the folder can't be written nothing can be put there either. Files under such names that
/// killed processes have left, longer names that begin so among them, are deleted.
QString temporaryFileName();
