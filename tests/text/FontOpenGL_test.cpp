#include <Kobaltrix/KXFont.h>

#include "text/TextTest.h"

#include <SDL_opengl.h>
#include <SDL_video.h>

#include <string>

namespace {
struct FontOpenGL : TextTest {};

// State that a game may have set and that neither measuring nor printing may change.
std::vector<double> openGLState() {
    std::vector<double> state;
    for (const GLenum name :
         {GL_MODELVIEW_MATRIX, GL_PROJECTION_MATRIX, GL_TEXTURE_BINDING_2D, GL_BLEND, GL_BLEND_SRC,
          GL_BLEND_DST, GL_TEXTURE_2D, GL_MATRIX_MODE, GL_MODELVIEW_STACK_DEPTH, GL_ATTRIB_STACK_DEPTH,
          GL_CLIENT_ATTRIB_STACK_DEPTH, GL_POLYGON_MODE, GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_ROWS,
          GL_UNPACK_SKIP_PIXELS, GL_UNPACK_ALIGNMENT}) {
        double values[16] = {};
        glGetDoublev(name, values);
        state.insert(state.end(), values, values + 16);
    }
    GLint environment = 0;
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &environment);
    state.push_back(environment);
    return state;
}

TEST_F(FontOpenGL, TheGamesStateIsLeftAlone) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    for (const bool texturing : {true, false})
        for (const int mode : {1, 2}) {
            KXFont clean(testFont(), mode), font(testFont(), mode);
            const Image expected = draw([&] { clean.print({9, 9}, white, "a{C1,1,0,1}b{EC}c"); });
            glPushAttrib(GL_ALL_ATTRIB_BITS);
            glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
            glBindTexture(GL_TEXTURE_2D, texture);
            glTranslatef(3, 4, 0);
            // Uploads that followed this would read far outside of their memory.
            glPixelStorei(GL_UNPACK_ROW_LENGTH, 5000);
            glPixelStorei(GL_UNPACK_SKIP_ROWS, 700);
            glPixelStorei(GL_UNPACK_SKIP_PIXELS, 70);
            glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
            glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
            glBlendFunc(GL_ONE, GL_ONE);
            if (mode == 2)
                glDisable(GL_BLEND); // polygons are blended as the game blends
            if (!texturing)
                glDisable(GL_TEXTURE_2D);
            std::vector<double> before = openGLState();
            font.stringBounds("xyz");
            EXPECT_EQ(openGLState(), before);
            const Image actual = draw([&] { font.print({6, 5}, white, "a{C1,1,0,1}b{EC}c"); });
            float color[4];
            glGetFloatv(GL_CURRENT_COLOR, color);
            EXPECT_EQ(color[2], 1); // the default colour, not the span's
            EXPECT_EQ(differingPixels(actual, expected), 0) << "mode " << mode;
            if (mode == 1) { // polygons promise to leave texturing on
                EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
                (texturing ? glEnable : glDisable)(GL_TEXTURE_2D);
            }
            EXPECT_EQ(openGLState(), before);
            glTranslatef(-3, -4, 0);
            glPopClientAttrib();
            glPopAttrib();
        }
    glDeleteTextures(1, &texture);
}

// The textures and display lists that a game has in the current context.
struct Names {
    static constexpr int count = 40;
    GLuint textures[count];
    GLuint lists = glGenLists(count);
    Names() {
        glGenTextures(count, textures);
        for (int i = 0; i < count; ++i) {
            glBindTexture(GL_TEXTURE_2D, textures[i]);
            glNewList(lists + i, GL_COMPILE);
            glEndList();
        }
        glBindTexture(GL_TEXTURE_2D, 0);
    }
    ~Names() {
        glDeleteTextures(count, textures);
        glDeleteLists(lists, count);
    }
    // No more and no fewer than these must exist.
    static void expectAlive() {
        int aliveTextures = 0, aliveLists = 0;
        for (GLuint name = 1; name < 1000; ++name) {
            aliveTextures += glIsTexture(name) ? 1 : 0;
            aliveLists += glIsList(name) ? 1 : 0;
        }
        EXPECT_EQ(aliveTextures, +count);
        EXPECT_EQ(aliveLists, +count);
    }
};

TEST_F(FontOpenGL, GlyphsFollowTheContext) {
    for (const int mode : {1, 2}) {
        SCOPED_TRACE(mode);
        window->setRenderContext();
        auto names =
            std::make_unique<Names>(); // a font that deletes its glyphs in the wrong context hits these
        auto font = std::make_unique<KXFont>(testFont(), mode);
        const auto print = [&] { font->print({5, 5}, white, "Text in mode %d", mode); };
        const Image expected = draw(print);
        const auto expectText = [&](KXWindow& target) {
            target.setRenderContext();
            EXPECT_EQ(differingPixels(draw(print, &target), expected), 0);
        };
        auto other = makeWindow();
        expectText(*other);
        window->setRenderContext();
        Names::expectAlive();
        font->setSize(11);
        Names::expectAlive();
        font->setSize(10);
        expectText(*window);
        expectText(*other);
        other.reset(); // the context of a new window may have the address that this one's had
        other = makeWindow();
        expectText(*other);
        other.reset(); // none is current now, and the glyphs' own is gone
        font->setSize(11);
        window->setRenderContext();
        Names::expectAlive();
        draw(print);
        // What was current when glyphs of elsewhere are deleted is current afterwards, even if it is none.
        other = makeWindow();
        SDL_GLContext current = SDL_GL_GetCurrentContext();
        font->setSize(10);
        EXPECT_EQ(SDL_GL_GetCurrentContext(), current);
        expectText(*window);
        makeWindow().reset();
        font->setSize(11);
        EXPECT_EQ(SDL_GL_GetCurrentContext(), nullptr);
        window->setRenderContext();
        Names::expectAlive();
        font->setSize(10);
        expectText(*other);
        // The glyphs' own is gone while another is current.
        window->setRenderContext();
        other.reset();
        font->setSize(11);
        Names::expectAlive();
        font->setSize(10);
        expectText(*window);
        // A new start of the platform counts windows from 1 again.
        names.reset();
        KXDeInit();
        KXInit();
        window = makeWindow();
        names = std::make_unique<Names>();
        expectText(*window);
        other = makeWindow();
        expectText(*other);
        other.reset();
        window->setRenderContext();
        font.reset();
        Names::expectAlive();
    }
}

TEST_F(FontOpenGL, NeighboursInTheTextureDoNotShow) {
    KXFont lonely(testFont(), 2), crowded(testFont(), 2);
    for (const char* some : {"MWHj", "|gQ@", "#&%%Z", "x[]{}"})
        crowded.print({0, 0}, white, "%s%s", some, "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789");
    const auto enlarged = [&](KXFont& font, char c) {
        return draw([&] {
            glPushMatrix();
            glScalef(4.3f, 4.3f, 1);
            font.print({3.4f, 0.3f}, white, "%c", c);
            glPopMatrix();
        });
    };
    for (const char c : std::string("MWHj|gQ@#&Zx[]ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"))
        EXPECT_EQ(differingPixels(enlarged(lonely, c), enlarged(crowded, c), 2), 0) << c;
}

TEST_F(FontOpenGL, WithoutAContextGlyphsWait) {
    for (const int mode : {1, 2}) {
        makeWindow().reset(); // the current window: no other takes its place
        KXFont font(testFont(), mode);
        EXPECT_GT(font.lineHeight(), 0);
        EXPECT_EQ(font.stringBounds("text").width, 0);
        EXPECT_EQ(font.advance("text"), 0);
        font.print({0, 0}, white, "text");
        window->setRenderContext();
        EXPECT_GT(font.stringBounds("text").width, 0);
        EXPECT_GT(drawnPixels([&] { font.print({0, 0}, white, "text"); }), 0);
    }
}
} // namespace
