#pragma once

class QDir;
class QString;

// Any thread. Failures show only in the result; nothing is logged.

/// Copies all files under `source`, hidden ones too, to the same relative paths under `target`, and
/// overwrites files there. Makes the directories that files need, so no empty ones; doesn't follow
/// links to directories. Flushes to disk. True for a `source` without files. Stops at the first
/// failure, such as a directory that can't be read, and leaves what it has copied so far.
bool copyDirectory(const QString &source, const QString &target);

/// Makes the directory `path` with its missing parents; `exists()` of the result tells whether that
/// worked.
QDir makeDirectory(const QString &path);

/// Moves a file in one step: at every moment the target is the old file or the whole new one. Fails
/// on an existing target without `replaceExisting`. A failure leaves both files alone.
bool moveFile(const QString &source, const QString &target, bool replaceExisting);

/// Deletes the directory `path` with all in it, or the link in its place; never what a link points
/// at. Succeeds if there is nothing. Stops at the first failure, when some files may be gone, those
/// of subdirectories first.
bool removeTree(const QString &path);

/// An unused name in the system's temporary folder; makes no file. In a folder that can't be
/// written the name is no use either. Deletes files that killed processes have left under such
/// names, or under longer ones that begin so.
QString temporaryFileName();
