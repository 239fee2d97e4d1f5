#include "MessageThrottle.h"

MessageThrottle::Verdict MessageThrottle::judge(const QString &text, qint64 nowMs)
{
    if (!windowOpen || nowMs - windowStart >= WindowMs) {
        windowOpen = true;
        windowStart = nowMs;
        overflowed = false;
        texts.clear();
    }
    if (texts.contains(text))
        return Verdict::Drop;
    if (texts.size() < TextsPerWindow) {
        texts.insert(text);
        return Verdict::Pass;
    }
    const bool first = !overflowed;
    overflowed = true;
    return first ? Verdict::DropTheFirst : Verdict::Drop;
}
