// A game of one frame that needs something of every room of the library. It looks at its own picture.

#include <Kobaltrix/Kobaltrix.h>

#include <stdio.h>

// The first pixel in the file: blue, green, red.
static bool isTeal(const char* path) {
    unsigned char header[54], pixel[3];
    FILE* file = fopen(path, "rb");
    if (!file)
        return false;
    bool read = fread(header, sizeof header, 1, file) == 1;
    const long start = header[10] | header[11] << 8;
    read = read && fseek(file, start, SEEK_SET) == 0 && fread(pixel, sizeof pixel, 1, file) == 1;
    fclose(file);
    return read && pixel[0] == 166 && pixel[1] == 154 && pixel[2] == 74;
}

static int play() {
    KXWindow window("Consumer", {64, 48});
    KXUIButton button;
    button.setRect({8, 8}, {40, 16});
    KXSprite sprite;
    KXTimer timer(1);
    KXNetworkBuffer buffer;
    buffer.appendLong(7);
    if (!KXInitAudio()) {
        printf("no sound: %s\n", KXError());
        return 1;
    }
    KXResetLogicLoop();
    KXPreLogicLoop();
    while (KXLogicLoop()) {
        button.clicked(KXMouseLeft);
        sprite.poll();
        if (timer.tick())
            printf("%ld steps\n", buffer.readLong());
        KXLogicUpdate();
    }
    window.setRenderContext();
    KXClear(KXMakeColori(74, 154, 166, 255));
    button.draw();
    sprite.draw({0, 0});
    window.swapBuffers();
    KXPostLogicLoop();
    if (!window.saveBuffer("game.bmp", 0) || !isTeal("game.bmp")) {
        printf("not the picture that was drawn: %s\n", KXError());
        return 1;
    }
    return 0;
}

int main(int, char** argv) {
    if (!KXInit(argv[0])) {
        printf("%s\n", KXError());
        return 1;
    }
    const int result = play();
    KXDeInit();
    return result;
}
