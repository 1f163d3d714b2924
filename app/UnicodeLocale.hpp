#pragma once

#include <clocale>

namespace app {

// Sets the calling thread's locale to C.UTF-8, in which wide characters are Unicode, for the lifetime of the object. If
// the system lacks that locale, nothing changes. The locale is opened once, because opening it costs more than printing
// a row.
class UnicodeLocale {
public:
    UnicodeLocale() : m_previous(uselocale(unicode())) {}
    UnicodeLocale(const UnicodeLocale&) = delete;
    UnicodeLocale& operator=(const UnicodeLocale&) = delete;
    ~UnicodeLocale() { uselocale(m_previous); }

private:
    static locale_t unicode() {
        static const locale_t s_locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return s_locale;
    }

    locale_t m_previous;
};

}  // namespace app
