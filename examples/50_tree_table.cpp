// A tree of places to the left, and to the right a table of who lives in the one that is selected. Titles
// sort, borders between them are dragged.
#include "example.h"

int main(int argc, char** argv) {
    Example example(argc, argv);
    if (!KXInit(argv[0]))
        return example.failed();
    {
        KXWindow window("Tree and table", {540, 230});
        KXUISetGlobalFont(example.font(), KXAliasModeTexture, 13, KXZeroPoint);
        KXSetUIColor(teal, dusk, night, teal, gold, paper);
        KXTexture leaves(KXImage(10, 10, leaf)); // a picture of your own

        KXUITreeList places;
        places.setRect({16, 16}, {160, 198});
        const int wood = places.add(0, "Wood"), oak = places.add(wood, "Old oak");
        places.add(oak, "Hollow");
        places.add(oak, "Crown");
        places.add(wood, "Clearing");
        const int village = places.add(0, "Village");
        places.add(village, "Barn");
        places.add(village, "Church tower");
        places.setOpen(wood, -1);
        places.setSelectedNode(oak);
        places.setIcon(oak, &leaves);

        KXUITable birds;
        birds.setRect({192, 16}, {332, 198});
        birds.addColumn({"Name", 110});
        birds.addColumn({"Since", 70, KXTextAlignRight, -1});
        birds.addColumn({"Says", 120});

        const struct {
            const char *name, *since, *says;
        } all[] = {{"Tawny owl", "3", "Hoo, hu-hu-hooo"},
                   {"Barn owl", "12", "Shreeee"},
                   {"Élan the elk", "100", "Nothing"},
                   {"Owl 10", "7", "Hoo"},
                   {"Owl 9", "8", "Hoo"},
                   {"Robin", "1", "Tick, tick"}};
        const auto listBirds = [&] {
            birds.clear();
            for (const auto& bird : all)
                if ((bird.name[0] + places.selectedNode()) % 3) // who lives where
                    birds.addRow({bird.name, bird.since, bird.says});
        };
        listBirds();

        KXSetLogicExact(-1);
        KXResetLogicLoop();
        while (!KXApplicationQuitRequested()) {
            KXPreLogicLoop();
            while (KXLogicLoop()) {
                if (places.poll() && places.selectionChanged())
                    listBirds();
                birds.poll();
                KXLogicUpdate();
                example.stepDone();
            }
            window.setRenderContext();
            KXClear(night);
            places.draw();
            birds.draw();
            example.frameDone(window);
            window.swapBuffers();
            KXPostLogicLoop();
            KXWaitForLogicStep();
        }
    }
    KXDeInit();
    return 0;
}
