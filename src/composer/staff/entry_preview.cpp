#include "composer/staff/entry_preview.h"

#include "composer/notation/staff_choice.h"

#include <algorithm>
#include <utility>

namespace {

using notation::Symbol;
using notation::System;

constexpr double kGap = 0.5;  ///< staff spaces, clear of the mark of the range's end

/// The preview of an entry whose head stands at a place of a system.
EntryPreview previewAt(const StaffPage& page, std::size_t system, notation::System entry, double x,
                       bool tied) {
    EntryPreview preview{std::move(entry), page.placeOf(system), tied};
    const notation::Staff staff = preview.note().staff;
    preview.place.left = preview.place.x(x);
    preview.place.top += (page.system(system).bottomLine(staff) - preview.entry.bottomLine(staff)) *
                         page.space() / 2;
    return preview;
}

}  // namespace

std::optional<EntryPreview> previewAtEnd(const StaffPage& page, const staff_entry::Entry& entry,
                                         bool tied) {
    if (!page.knowsEnd())
        return std::nullopt;
    const System& last = page.system(page.lastSystem());
    System preview = notation::layOutEntry(entry, page.staffOfNext(entry), page.notation().key);
    const double begins = last.symbols.empty() ? last.end : last.end + kGap;
    const double x = begins + notation::extentOf(preview.symbols.front()).left;
    return previewAt(page, page.lastSystem(), std::move(preview), x, tied);
}

std::optional<EntryPreview> previewOver(const StaffPage& page, int entry, int noteNumber) {
    const auto index = page.systemOf(entry);
    if (!index)
        return std::nullopt;
    const std::vector<Symbol>& symbols = page.system(*index).symbols;
    const auto written = std::find_if(symbols.begin(), symbols.end(),
                                      [entry](const Symbol& s) { return s.entry == entry; });
    if (written == symbols.end())
        return std::nullopt;
    const notation::Staff staff =
        notation::chooseStaves({{noteNumber, false}}, written->staff).front();
    return previewAt(
        page, *index,
        notation::layOutEntry({noteNumber, written->length}, staff, page.notation().key),
        written->x, false);
}
