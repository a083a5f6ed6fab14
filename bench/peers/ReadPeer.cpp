// peer_read FILE: reads the bytes of a file and ignores them.

#include "Peer.h"

#include <fcntl.h>
#include <unistd.h>
#include <vector>

int main(int argc, char** argv) {
    const int file = argc == 2 ? ::open(argv[1], O_RDONLY | O_CLOEXEC) : -1;
    if (file < 0) {
        return 2;
    }
    std::vector<char> block(ambulet::blockSize);
    while (::read(file, block.data(), block.size()) > 0) {
    }
    ::close(file);
    return 0;
}
