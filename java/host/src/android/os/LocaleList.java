package android.os;

import java.util.Locale;
import java.util.StringJoiner;

/** Locales in order of preference. */
public final class LocaleList {
    private final Locale[] list;

    public LocaleList(Locale... list) {
        this.list = list.clone();
    }

    public static LocaleList getDefault() {
        return new LocaleList(Locale.getDefault());
    }

    /** Their BCP 47 tags, comma separated. */
    public String toLanguageTags() {
        StringJoiner tags = new StringJoiner(",");
        for (Locale locale : list) tags.add(locale.toLanguageTag());
        return tags.toString();
    }
}
