#pragma once

#include <jni.h>

namespace QxFontEffect {

/// Registers the natives of com.zorvane.android.sdk.qxe.QxText. False when the class or one of the methods is missing.
bool QxText_OnLoad(JavaVM* vm, JNIEnv* env);

// The natives, named like their Java methods.
//
// Each binds the instance to its text object first, an unbound one being error 19, and answers a failure with false,
// -1, 0 or null. The adders answer with the id of the effect. Nothing throws, except that an exception of the
// application's own getters is passed on by the captures.

/// Lets go of the instance's text object, which is deleted when nobody else holds it.
void QxText_finalize(JNIEnv* env, jobject self);

jint QxText_AddInnerShadowTextEffect(JNIEnv* env, jobject self, jfloat angle, jfloat distance, jfloat size, jint color,
                                     jfloat opacity);
/// Three arrays of one length, an element of each a stop. Missing arrays and different lengths: -1 without a message.
jint QxText_AddLinearGradientTextEffect(JNIEnv* env, jobject self, jfloat angle, jfloat scale, jintArray colors,
                                        jfloatArray alphas, jfloatArray positions, jfloat opacity);
jint QxText_AddOuterGlowTextEffect(JNIEnv* env, jobject self, jfloat size, jint color, jfloat opacity);
jint QxText_AddOuterShadowTextEffect(JNIEnv* env, jobject self, jfloat angle, jfloat distance, jfloat size, jint color,
                                     jfloat opacity);
jint QxText_AddStrokeTextEffect(JNIEnv* env, jobject self, jfloat size, jint color, jfloat opacity, jint mode,
                                jint position);
void QxText_ClearAllTextEffect(JNIEnv* env, jobject self);

/// Draws into a picture of the view's size and the effects' margins: a new array of its pixels, row by row, each
/// 0xAARRGGBB and not premultiplied. A picture that no array can hold is error 7, a lack of memory error 1.
jintArray QxText_RenderTextEffect(JNIEnv* env, jobject self);

jboolean QxText_SetFont(JNIEnv* env, jobject self, jstring path);
jboolean QxText_SetFont2(JNIEnv* env, jobject self, jstring name, jbyteArray data);
jboolean QxText_SetFont3(JNIEnv* env, jobject self, jobject assetManager, jstring name);
jboolean QxText_SetFontFamilyName(JNIEnv* env, jobject self, jstring name);

/// The captures copy what they read only after all of it has been read: a getter that throws changes nothing.
jboolean QxText_SetPaint(JNIEnv* env, jobject self, jobject source);
jboolean QxText_SetLayout(JNIEnv* env, jobject self, jobject layout);
jboolean QxText_SetLine(JNIEnv* env, jobject self, jint count);
jboolean QxText_SetView(JNIEnv* env, jobject self, jobject source);

/// Bitmap width and height of the view.
jintArray QxText_GetDrawingBitmapSize(JNIEnv* env, jobject self);
jint QxText_GetEffectLeftOffset(JNIEnv* env, jobject self);
jint QxText_GetEffectTopOffset(JNIEnv* env, jobject self);
jint QxText_GetEffectRightOffset(JNIEnv* env, jobject self);
jint QxText_GetEffectBottomOffset(JNIEnv* env, jobject self);

}  // namespace QxFontEffect
