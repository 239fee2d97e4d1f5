#pragma once

#include <cstdint>
#include <memory>
#include <string>

class QString;

/// The file system where Qt promises too little: one-step moves, exclusive creation, attributes.
/// Any thread.
namespace platform {

/// The user's documents folder; empty if there is none.
std::wstring documentsFolder();

/// Whether a file or directory can have exactly this name.
bool canHoldFileName(const QString &name);

/// Whether listings leave out what is called `name`.
bool isHiddenName(const QString &name);

/// Whether everything in `directory` can be listed.
bool canReadDirectory(const QString &directory);

/// Flushes the names in `directory` to disk, if the system needs that.
void flushDirectory(const QString &directory);

/// Copies one file with its permissions and time of last change, overwrites the file `target` and
/// flushes to disk. A failure may leave part of it.
bool copyFile(const QString &source, const QString &target);

/// Moves a file in one step. To another volume it copies the content, flushes it and puts it in
/// place in one step.
bool moveFile(const QString &source, const QString &target, bool replaceExisting);

enum class Creation { Made, Exists, Failed };

/// Makes the directory `path`, whose parent exists. Of several callers one gets `Made`.
Creation createDirectory(const QString &path);

enum class Placement { Placed, Taken, Failed };

/// Moves the directory `source` to `target` on the same volume, in one step if the system can.
/// `Taken` if `target` is neither free nor an empty directory.
Placement placeDirectory(const QString &source, const QString &target);

/// Removes a symbolic link or a junction, and not what it points at.
bool removeLink(const QString &path);

/// Whether a process with this number runs on this computer, whoever owns it.
bool isRunning(std::int64_t process);

/// A lock on a directory that ends with the object, or with the process, even a killed one.
class DirectoryHold
{
public:
    /// Null when another holds the directory or it is gone.
    static std::unique_ptr<DirectoryHold> take(const QString &directory);

    ~DirectoryHold();
    DirectoryHold(const DirectoryHold &) = delete;
    DirectoryHold &operator=(const DirectoryHold &) = delete;

    /// False on a file system without locks, where others may hold it too.
    bool isExclusive() const;

private:
    struct Native;
    explicit DirectoryHold(std::unique_ptr<Native> native);
    std::unique_ptr<Native> native;
};

} // namespace platform
