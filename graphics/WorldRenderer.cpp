#include "graphics/GraphicsLayer.h"

// The world's drawing: tile layers, actors, icons and the HUD. Filled in with the world renderer.
void cGraphicsLayer::RenderWorld( const cScene &, tCharacterList &, tCharacterList &, tBulletList &,
								tExplosionList &, tItemList & ) {
}
