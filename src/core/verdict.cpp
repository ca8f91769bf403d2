#include "core/verdict.h"

#include "platform/user_text.h"

QString inWords(Verdict verdict) {
    return verdict == Verdict::Right ? UserText::tr("Giusto") : UserText::tr("Sbagliato");
}
