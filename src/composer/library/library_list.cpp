#include "composer/library/library_list.h"

#include "composer/library/melody_names.h"
#include "platform/folders.h"

#include <QCollator>
#include <QStringList>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

const QString kFolderMark = QStringLiteral("» ");
const QLatin1String kSelf(".");
const QLatin1String kParent("..");
const QLatin1String kCompanion("._");
const QLatin1String kPattern("*.mel");

using Kind = LibraryEntry::Kind;

std::vector<LibraryEntry> subFolders(const Folders& folders, const QString& folder) {
    std::vector<LibraryEntry> entries;
    const QStringList names = folders.subFolders(folder);
    for (const QString& name : names) {
        if (name != kSelf)
            entries.push_back({name == kParent ? Kind::Parent : Kind::Folder, name, name});
    }
    return entries;
}

bool isParent(const LibraryEntry& entry) {
    return entry.kind == Kind::Parent;
}

void sort(std::vector<LibraryEntry>& melodies, const QCollator& collator) {
    std::vector<std::pair<QCollatorSortKey, LibraryEntry>> keyed;
    keyed.reserve(melodies.size());
    for (LibraryEntry& melody : melodies)
        keyed.emplace_back(collator.sortKey(melody.name), std::move(melody));
    std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
        const int order = a.first.compare(b.first);
        return order != 0 ? order < 0 : a.second.fileName < b.second.fileName;
    });
    std::transform(keyed.begin(), keyed.end(), melodies.begin(),
                   [](auto& pair) { return std::move(pair.second); });
}

}  // namespace

QString LibraryEntry::text() const {
    return kind == Kind::Melody ? name : kFolderMark + name;
}

std::vector<LibraryEntry> library_list::read(const Folders& folders, const QString& folder,
                                             Parent parent, const QCollator& collator) {
    std::vector<LibraryEntry> entries = subFolders(folders, folder);
    if (parent == Parent::Hidden)
        std::erase_if(entries, isParent);
    else if (std::none_of(entries.begin(), entries.end(), isParent))
        entries.insert(entries.begin(), {Kind::Parent, kParent, kParent});
    std::vector<LibraryEntry> sorted = melodies(folders, folder);
    sort(sorted, collator);
    std::move(sorted.begin(), sorted.end(), std::back_inserter(entries));
    return entries;
}

std::vector<LibraryEntry> library_list::melodies(const Folders& folders, const QString& folder) {
    std::vector<LibraryEntry> entries;
    const QStringList files = folders.files(folder, kPattern);
    entries.reserve(static_cast<std::size_t>(files.size()));
    for (const QString& file : files) {
        QString name = melody_names::melodyName(file);
        if (!name.isEmpty() && !name.startsWith(kCompanion))
            entries.push_back({Kind::Melody, std::move(name), file});
    }
    return entries;
}

bool library_list::hasSubFolders(const Folders& folders, const QString& folder) {
    const auto entries = subFolders(folders, folder);
    return !std::all_of(entries.begin(), entries.end(), isParent);
}
