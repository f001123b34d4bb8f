#include "LocaleRegistry.h"

#include <minikin/LocaleList.h>

#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace minikin {

namespace {

struct Registry {
    Registry() { lists.push_back(std::make_unique<const LocaleList>()); }

    std::mutex lock;
    std::unordered_map<std::string, uint32_t> ids;
    std::vector<std::unique_ptr<const LocaleList>> lists;  ///< by id
};

// Never destroyed: texts and fonts held in static objects may still ask while the process ends.
Registry& registry() {
    static Registry* const instance = new Registry();
    return *instance;
}

}  // namespace

uint32_t registerLocaleList(const std::string& locales) {
    Registry& known = registry();
    const std::lock_guard<std::mutex> guard(known.lock);
    const auto found = known.ids.find(locales);
    if (found != known.ids.end()) return found->second;

    auto list = std::make_unique<const LocaleList>(locales);
    if (list->empty()) return 0;
    const uint32_t id = static_cast<uint32_t>(known.lists.size());
    known.lists.push_back(std::move(list));
    known.ids.emplace(locales, id);
    return id;
}

const LocaleList& localeListOf(uint32_t id) {
    Registry& known = registry();
    const std::lock_guard<std::mutex> guard(known.lock);
    return *known.lists[id < known.lists.size() ? id : 0];
}

}  // namespace minikin
