#pragma once

#include <memory>
#include <utility>

namespace ovin {

/// A picture that only the world that made it can draw. Copies share the content. A world may load the content only when it
/// is first drawn, so that holding an image costs nothing. May be copied and dropped on any thread.
class Image {
public:
    /// What a world keeps behind an image.
    class Content {
    public:
        Content() = default;
        Content(const Content&) = delete;
        Content& operator=(const Content&) = delete;
        virtual ~Content() = default;

        /// Whether both are the same picture, as far as that is known without drawing them.
        [[nodiscard]] virtual bool isSameAs(const Content& other) const { return this == &other; }
    };

    /// `content` is never null.
    explicit Image(std::shared_ptr<const Content> content) : content_(std::move(content)) {}

    [[nodiscard]] const Content& content() const { return *content_; }

    /// Pictures are not compared.
    friend bool operator==(const Image& a, const Image& b) { return a.content_->isSameAs(*b.content_); }

private:
    std::shared_ptr<const Content> content_;
};

}  // namespace ovin
