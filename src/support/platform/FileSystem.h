#pragma once

#include <cstdint>
#include <memory>
#include <string>

class QString;

/// The file system where Qt doesn't promise enough: one-step moves, exclusive creation, attributes.
namespace platform {

/// The user's documents folder, empty where there is none.
std::wstring documentsFolder();

/// Whether the file system takes `name` for a file or directory, letter for letter.
bool canHoldFileName(const QString &name);

/// Whether the file system hides what is called `name` from listings.
bool isHiddenName(const QString &name);

/// Whether all that is in `directory` can be listed.
bool canReadDirectory(const QString &directory);

/// Brings to the disk which names are in `directory`, where the system needs to be told.
void flushDirectory(const QString &directory);

/// Copies one file over whatever file `target` is, with permissions and time of last change, and
/// brings it to the disk. A failure may leave a part of it.
bool copyFile(const QString &source, const QString &target);

/// Moves a file in one step. Where `target` is on another volume and the system can do it safely,
/// the content is brought over, flushed and put in place in one step.
bool moveFile(const QString &source, const QString &target, bool replaceExisting);

enum class Creation { Made, Exists, Failed };

/// Makes the directory `path`, whose parent exists. `Made` means that nobody else made it.
Creation createDirectory(const QString &path);

enum class Placement { Placed, Taken, Failed };

/// Moves the directory `source` to `target` on the same volume, in one step where the system can.
/// `target` is free or an empty directory; `Taken` means that by now it is something else.
Placement placeDirectory(const QString &source, const QString &target);

/// Removes a symbolic link, or what the platform has of that kind, and not what it points at.
bool removeLink(const QString &path);

/// Whether the process of this number runs on this computer, whosever it is.
bool isRunning(std::int64_t process);

/// A hold on a directory that ends with the object or with the process, however that ends.
class DirectoryHold
{
public:
    /// Null when another holds the directory or it is gone.
    static std::unique_ptr<DirectoryHold> take(const QString &directory);

    ~DirectoryHold();
    DirectoryHold(const DirectoryHold &) = delete;
    DirectoryHold &operator=(const DirectoryHold &) = delete;

    /// False on a file system without locks, where others may think that they hold it too.
    bool isExclusive() const;

private:
    struct Native;
    explicit DirectoryHold(std::unique_ptr<Native> native);
    std::unique_ptr<Native> native;
};

} // namespace platform
