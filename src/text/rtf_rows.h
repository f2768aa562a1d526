// The rows of tables that are open while RTF is read, one within the other.
#ifndef BRCORE8_SRC_TEXT_RTF_ROWS_H
#define BRCORE8_SRC_TEXT_RTF_ROWS_H

#include <array>
#include <cstddef>

namespace brcore8::rtf {

class Rows {
public:
    // As deep as a rich-edit control's tables nest, and as many cells as a row of them has.
    static constexpr int kDeepest = 15;
    static constexpr int kMostCells = 63;

    int Depth() const noexcept { return depth_; }
    void Enter() noexcept { rows_[At(++depth_)].cells = 0; }
    void Leave() noexcept { --depth_; }
    // Forgets the rows that are deeper.
    void LeaveTo(int depth) noexcept {
        if (depth_ > depth) depth_ = depth;
    }

    // Cells of the deepest row.
    void CountCell() noexcept { ++rows_[At(depth_)].cells; }
    std::size_t MissingCells() const noexcept {
        const Row& row = rows_[At(depth_)];
        return row.cells < row.edges ? row.edges - row.cells : 0;
    }

    // The edges that follow are those of the deepest row, or of the outermost; a row keeps its
    // edges until others are given.
    void StartEdges(bool ofDeepest) noexcept {
        described_ = ofDeepest && depth_ > 0 ? depth_ : 1;
        rows_[At(described_)].edges = 0;
    }
    void AddEdge() noexcept {
        std::size_t& edges = rows_[At(described_)].edges;
        if (edges < kMostCells) ++edges;
    }

private:
    struct Row {
        std::size_t cells = 0;
        std::size_t edges = 0;
    };
    static std::size_t At(int depth) noexcept { return static_cast<std::size_t>(depth - 1); }

    std::array<Row, kDeepest> rows_;
    int depth_ = 0;
    int described_ = 1;
};

}  // namespace brcore8::rtf

#endif
