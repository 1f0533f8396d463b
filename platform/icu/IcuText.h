#pragma once

#include <memory>
#include <string>

#include "platform/Text.h"

struct UCollator;

namespace ovin {

/// Text services of the ICU library.
class IcuText final : public Text {
public:
    /// Sorts as `locale` does, for example "de_DE" or "de_DE.UTF-8"; the empty string stands for the locale by which the
    /// environment sorts: the first of LC_ALL, LC_COLLATE and LANG that is set and not empty. An unknown locale sorts as the
    /// root locale does, and so do "C" and "POSIX", whose own order depends on letter case.
    explicit IcuText(const std::string& locale = "");
    ~IcuText() override;

    [[nodiscard]] std::string prefix(std::string_view text, std::size_t count) const override;
    [[nodiscard]] std::string trimmed(std::string_view text) const override;
    [[nodiscard]] std::weak_ordering compareIgnoringCase(std::string_view a, std::string_view b) const override;

private:
    struct CloseCollator {
        void operator()(UCollator* collator) const;
    };
    /// Null when the library's data is missing; texts then compare byte by byte.
    std::unique_ptr<UCollator, CloseCollator> collator_;
};

}  // namespace ovin
