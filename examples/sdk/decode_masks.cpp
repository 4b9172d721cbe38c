// Shows for each measurement of a stream which bits of which words it takes.
//
//     c++ -std=c++17 decode_masks.cpp -lkavu_sdk -o decode_masks
//     ./decode_masks FILE STREAM_NUMBER
#include <array>
#include <cstdlib>
#include <iostream>
#include <kavu_sdk.hpp>

namespace {

void show(const kavu_sdk_cpp::Session& session, std::size_t index) {
    const auto measurement = session.measurement(index);
    for (int location = 1; location <= measurement.locations; ++location) {
        int number = 0;
        for (const auto& fragment : session.fragments(index, location)) {
            std::array<int, 64> bits{};
            const int count = kavu_sdk_mask_bits(session.get(), index, location, ++number,
                                                 bits.data(), bits.size());
            std::cout << measurement.name << ": word " << fragment.word.start << ", " << count
                      << " bits" << (fragment.full_word != 0 ? " (all)" : "") << '\n';
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: decode_masks FILE STREAM_NUMBER\n";
        return 64;
    }
    try {
        kavu_sdk_cpp::Session session(argv[1]);
        session.loadStream(std::atoi(argv[2]));
        for (std::size_t i = 0; i < session.measurementCount(); ++i) {
            show(session, i);
        }
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 2;
    }
    return 0;
}
