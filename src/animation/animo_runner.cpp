// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// The script's methods of ANIMO.
#include <algorithm>

#include "animation/animo.h"
#include "animation/animo_object.h"
#include "animation/graphic_methods.h"
#include "frame/unit.h"
#include "sound/script_level.h"
#include "structure/scene.h"

namespace {

// What stands behind an ANIMO that is out of service: an animation without frames.
template <auto Do>
CMC_Variable* onAnimo(const MethodCall& call) {
    CAnimo6* animo = static_cast<CMC_Animo*>(call.object)->getAnimo();
    using Result = decltype(Do(call, *animo));
    if constexpr (std::is_void_v<Result>) {
        if (animo) Do(call, *animo);
        return nullptr;
    } else {
        return toScript(animo ? Do(call, *animo) : Result{});
    }
}

// An event or a frame may be told by its number or its name.
bool isNumber(const MethodCall& call, int i) { return call.value(i)->getType() == CMC_Integer::kType; }

int eventOf(const MethodCall& call, const CAnimo& animo, int i) {
    return isNumber(call, i) ? call.integer(i) : animo.GetEventNo(call.text(i));
}

int largest(const CAnimo& animo, int (CFrame::*size)() const) {
    int best = 0;
    for (int i = 0; i < animo.GetNOF(); ++i)
        best = std::max(best, (animo.GetFrame(i)->*size)());
    return best;
}

void show(const MethodCall&, CAnimo6& animo) { animo.show(); }
void hide(const MethodCall&, CAnimo6& animo) { animo.hide(); }
void pause(const MethodCall&, CAnimo6& animo) { animo.Pause(); }
void resume(const MethodCall&, CAnimo6& animo) { animo.Resume(); }

void play(const MethodCall& call, CAnimo6& animo) {
    if (call.count() > 0) {
        animo.Play(call.text(0), 0);
    } else {
        animo.play();
    }
}

void setFrame(const MethodCall& call, CAnimo6& animo) {
    if (call.count() < 2) {
        animo.SetFrame(call.count() == 0 ? 0 : call.integer(0));
        return;
    }
    const int event = eventOf(call, animo, 0);
    if (isNumber(call, 1)) {
        animo.SetEventFrame(event, call.integer(1));
    } else if (event >= 0) {
        animo.SetEventFrame(event, call.text(1));
    }
}

void stop(const MethodCall& call, CAnimo6& animo) { animo.stop(call.count() == 0 || call.truth(0)); }

bool isPlaying(const MethodCall& call, const CAnimo6& animo) {
    return animo.IsPlaying() && (call.count() == 0 || animo.getCurrentEventName().equalsIgnoreCase(call.text(0)));
}

int positionX(const MethodCall& call, const CAnimo6& animo) {
    return (call.count() > 0 ? animo.getPosition() : animo.GetPosition()).x;
}

int positionY(const MethodCall& call, const CAnimo6& animo) {
    return (call.count() > 0 ? animo.getPosition() : animo.GetPosition()).y;
}

int frame(const MethodCall&, const CAnimo6& animo) { return animo.Current(); }

CXString frameName(const MethodCall& call, const CAnimo6& animo) {
    if (call.count() == 0) return animo.getFrameName(animo.getCurrentEvent(), animo.GetCurrentFrameInSequence());
    const int event = eventOf(call, animo, 0);
    return animo.getFrameName(event, call.integer(1));
}

void setFrameName(const MethodCall& call, CAnimo6& animo) {
    const int event = eventOf(call, animo, 0);
    const int index = call.integer(1);
    animo.setFrameName(event, index, call.text(2));
}

int frameNo(const MethodCall& call, const CAnimo6& animo) {
    if (call.count() == 0) return animo.GetFrameNo();
    const int event = eventOf(call, animo, 0);
    return isNumber(call, 1) ? animo.GetFrameNo(event, call.integer(1)) : animo.GetFrameNo(event, call.text(1));
}

CXString eventName(const MethodCall& call, const CAnimo6& animo) {
    return animo.GetEventName(call.count() > 0 ? call.integer(0) : animo.getCurrentEvent());
}

void playRand(const MethodCall& call, CAnimo6& animo) {
    CUnit6* unit = call.scene ? call.scene->getUnit() : nullptr;
    if (!unit) return;
    const CXString event = call.text(0);
    const double seconds = call.real(1);
    unit->addRandomPlayable(&animo, seconds, call.integer(2), event);
}

void setForward(const MethodCall&, CAnimo6& animo) { animo.SetDirection(CAnimo::kForward); }
void setBackward(const MethodCall&, CAnimo6& animo) { animo.SetDirection(CAnimo::kBackward); }
void nextFrame(const MethodCall&, CAnimo6& animo) { animo.Next(); }
void prevFrame(const MethodCall&, CAnimo6& animo) { animo.Prev(); }
void setFPS(const MethodCall& call, CAnimo6& animo) { animo.setFPS(call.integer(0)); }
int framePosX(const MethodCall&, const CAnimo6& animo) { return animo.getCurrFramePosition().x; }
int framePosY(const MethodCall&, const CAnimo6& animo) { return animo.getCurrFramePosition().y; }
int eventCount(const MethodCall&, const CAnimo6& animo) { return animo.GetNOE(); }
int frameCount(const MethodCall&, const CAnimo6& animo) { return animo.GetNOF(); }

int framesInEvent(const MethodCall& call, const CAnimo6& animo) { return animo.GetNOFInEvent(eventOf(call, animo, 0)); }

int maxWidth(const MethodCall&, const CAnimo6& animo) { return largest(animo, &CFrame::Width); }
int maxHeight(const MethodCall&, const CAnimo6& animo) { return largest(animo, &CFrame::Height); }
int frameInEvent(const MethodCall&, const CAnimo6& animo) { return animo.GetCurrentFrameInSequence(); }
void setVolume(const MethodCall& call, CAnimo6& animo) { animo.setVolume(volumeLevel(call.integer(0))); }
void setPan(const MethodCall& call, CAnimo6& animo) { animo.setPanning(panLevel(call.integer(0))); }
void setFreq(const MethodCall& call, CAnimo6& animo) { animo.setFrequency(call.integer(0)); }
void clip(const MethodCall& call, CAnimo6& animo) { graphic::clip(call, &animo); }
bool isNear(const MethodCall& call, CAnimo6& animo) { return graphic::isNear(call, &animo); }
void mergeAlpha(const MethodCall& call, CAnimo6& animo) { graphic::mergeAlpha(call, &animo); }
void setAnchor(const MethodCall& call, CAnimo6& animo) { graphic::setAnchor(call, &animo); }

constexpr MethodRow kMethods[] = {
    {1,  "SHOW",                   {onAnimo<show>, ""}                       },
    {2,  "HIDE",                   {onAnimo<hide>, ""}                       },
    {3,  "PAUSE",                  {onAnimo<pause>, ""}                      },
    {4,  "RESUME",                 {onAnimo<resume>, ""}                     },
    {5,  "SETPOSITION",            bind<&CMC_Picture::setPosition>           },
    {6,  "MOVE",                   bind<&CMC_Picture::move>                  },
    {7,  "LOAD",                   bind<&CMC_Picture::loadFile>              },
    {8,  "CLEARCLIPPING",          bind<&CMC_Picture::clearClipping>         },
    {9,  "SETCLIPPING",            {onAnimo<clip>, "*"}                      },
    {10, "PLAY",                   {onAnimo<play>, "*"}                      },
    {11, "SETFRAME",               {onAnimo<setFrame>, "*"}                  },
    {12, "STOP",                   {onAnimo<stop>, "*"}                      },
    {13, "ISPLAYING",              {onAnimo<isPlaying>, "*"}                 },
    {15, "GETPOSITIONX",           {onAnimo<positionX>, "*"}                 },
    {16, "GETPOSITIONY",           {onAnimo<positionY>, "*"}                 },
    {17, "GETWIDTH",               bind<&CMC_Picture::getWidth>              },
    {18, "GETHEIGHT",              bind<&CMC_Picture::getHeight>             },
    {19, "GETFRAME",               {onAnimo<frame>, ""}                      },
    {20, "GETFRAMENAME",           {onAnimo<frameName>, "*"}                 },
    {21, "GETFRAMENO",             {onAnimo<frameNo>, "*"}                   },
    {22, "GETEVENTNAME",           {onAnimo<eventName>, "*"}                 },
    {23, "ISNEAR",                 {onAnimo<isNear>, "*"}                    },
    {24, "ISINSIDE",               bind<&CMC_Picture::isInside>              },
    {25, "PLAYRAND",               {onAnimo<playRand>, "sdi"}                },
    {26, "MONITORCOLLISION",       bind<&CMC_Picture::monitorCollision>      },
    {27, "REMOVEMONITORCOLLISION", bind<&CMC_Picture::removeMonitorCollision>},
    {28, "SETFORWARD",             {onAnimo<setForward>, ""}                 },
    {29, "SETBACKWARD",            {onAnimo<setBackward>, ""}                },
    {30, "NEXTFRAME",              {onAnimo<nextFrame>, ""}                  },
    {31, "PREVFRAME",              {onAnimo<prevFrame>, ""}                  },
    {32, "SETPRIORITY",            bind<&CMC_Picture::setPriority>           },
    {33, "GETALPHA",               bind<&CMC_Picture::getAlpha>              },
    {34, "GETPIXEL",               bind<&CMC_Picture::getPixel>              },
    {35, "SETFPS",                 {onAnimo<setFPS>, "i"}                    },
    {36, "MERGEALPHA",             {onAnimo<mergeAlpha>, "iis"}              },
    {37, "INVALIDATE",             bind<&CMC_Picture::invalidate>            },
    {38, "GETCURRFRAMEPOSX",       {onAnimo<framePosX>, ""}                  },
    {39, "GETCURRFRAMEPOSY",       {onAnimo<framePosY>, ""}                  },
    {40, "GETCENTERX",             bind<&CMC_Picture::getCenterX>            },
    {41, "GETCENTERY",             bind<&CMC_Picture::getCenterY>            },
    {42, "GETNOE",                 {onAnimo<eventCount>, ""}                 },
    {43, "GETNOF",                 {onAnimo<frameCount>, ""}                 },
    {44, "GETNOFINEVENT",          {onAnimo<framesInEvent>, "v"}             },
    {45, "GETMAXWIDTH",            {onAnimo<maxWidth>, ""}                   },
    {46, "GETMAXHEIGHT",           {onAnimo<maxHeight>, ""}                  },
    {47, "ISVISIBLE",              bind<&CMC_Picture::isVisible>             },
    {48, "GETCFRAMEINEVENT",       {onAnimo<frameInEvent>, ""}               },
    {49, "SETASBUTTON",            bind<&CMC_Animo::setAsButton>             },
    {50, "SETONFF",                bind<&CMC_Animo::setOnFirstFrame>         },
    {51, "SETOPACITY",             bind<&CMC_Picture::setOpacity>            },
    {52, "SETVOLUME",              {onAnimo<setVolume>, "i"}                 },
    {53, "SETPAN",                 {onAnimo<setPan>, "i"}                    },
    {54, "SETFREQ",                {onAnimo<setFreq>, "i"}                   },
    {55, "SETANCHOR",              {onAnimo<setAnchor>, "*"}                 },
    {56, "SETFRAMENAME",           {onAnimo<setFrameName>, "vis"}            },
    {57, "GETPRIORITY",            bind<&CMC_Picture::getPriority>           },
    {58, "FLIPH",                  bind<&CMC_Picture::flipH>                 },
    {59, "FLIPV",                  bind<&CMC_Picture::flipV>                 },
    {60, "RESETFLIPS",             bind<&CMC_Picture::resetFlips>            },
};
static_assert(isMethodTable(kMethods));

}  // namespace

void CMC_Animo_Runner::prepareMthHashSet() {
    CMC_Runner::prepareMthHashSet();
    enterMethods(kMethods);
}
