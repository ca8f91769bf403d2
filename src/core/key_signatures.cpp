#include "core/key_signatures.h"

#include "platform/user_text.h"

namespace key_signatures {

QString majorName(const KeySignature& key) {
    return UserText::tr(key.major) + UserText::tr(" maggiore");
}

QString minorName(const KeySignature& key) {
    return UserText::tr(key.minor) + UserText::tr(" minore");
}

}  // namespace key_signatures
