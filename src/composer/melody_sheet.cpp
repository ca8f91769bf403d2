#include "composer/melody_sheet.h"

#include "composer/engraved_melody.h"
#include "composer/export/sheet_request.h"
#include "composer/melody/composition.h"
#include "platform/user_text.h"

MelodySheet sheetOf(const Composition& composition, const QString& title,
                    const score::Notation& notation) {
    return {title, composition.tempo, engravedSource(composition.melody, notation)};
}

SheetFile sheetFileOf(const Composition& composition, const SheetRequest& request) {
    using Form = SheetRequest::Form;
    const MelodySheet sheet = sheetOf(composition, request.title, request.notation);
    const Paper paper = request.paper.value_or(usualPaper());
    if (request.form == Form::Pdf)
        return {sheet_painter::pdf(sheet, paper), {}};
    const std::size_t count = sheet_painter::systemsOf(sheet, paper);
    const auto system = static_cast<std::size_t>(request.system - 1);
    if (system >= count) {
        return {{},
                UserText::tr("lo spartito ha righi da 1 a %1: il %2 non c'è")
                    .arg(count)
                    .arg(request.system)};
    }
    return {request.form == Form::Png ? sheet_painter::systemPng(sheet, paper, system)
                                      : sheet_painter::systemSvg(sheet, paper, system),
            {}};
}
