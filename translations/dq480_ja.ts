<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>AudioImport</name>
    <message>
        <source>it is not a recording this program can read.</source>
        <translation>このプログラムで読める録音ではありません。</translation>
    </message>
    <message>
        <source>it is longer than 30 minutes.</source>
        <translation>30分を超えています。</translation>
    </message>
    <message>
        <source>it is truncated: the file ends before the recording does.</source>
        <translation>途中で切れています: 録音の終わりより前にファイルが終わっています。</translation>
    </message>
    <message>
        <source>the import was cancelled.</source>
        <translation>取り込みは中止されました。</translation>
    </message>
    <message>
        <source>it holds no sound.</source>
        <translation>音が入っていません。</translation>
    </message>
    <message>
        <source>the MPEG decoder could not start.</source>
        <translation>MPEGデコーダを開始できませんでした。</translation>
    </message>
    <message>
        <source>the MPEG decoder refused it.</source>
        <translation>MPEGデコーダが受け付けませんでした。</translation>
    </message>
    <message>
        <source>it changes its sample rate or channels midway.</source>
        <translation>途中でサンプリング周波数またはチャンネル数が変わっています。</translation>
    </message>
    <message>
        <source>it is not a recording this program can read (no MPEG audio found).</source>
        <translation>このプログラムで読める録音ではありません (MPEG音声が見つかりません)。</translation>
    </message>
    <message>
        <source>it cannot be read (%1).</source>
        <translation>読み込めません (%1)。</translation>
    </message>
    <message>
        <source>it is silent (nothing louder than %1 dBFS).</source>
        <translation>無音です (%1 dBFSを超える音がありません)。</translation>
    </message>
    <message>
        <source>it is silent (quieter than the loudness meter&apos;s gate).</source>
        <translation>無音です (ラウドネス測定のゲートより小さい音です)。</translation>
    </message>
    <message>
        <source>the encoded sentence fails the device&apos;s MP2 check.</source>
        <translation>エンコードした文章が本体のMP2チェックに合格しません。</translation>
    </message>
    <message>
        <source>Cannot import %1: %2</source>
        <translation>%1 を取り込めません: %2</translation>
    </message>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>%1 を読み込めません: %2</translation>
    </message>
    <message>
        <source>the loudness meter refused %1 channels at %2 Hz.</source>
        <translation>ラウドネス測定が %1 チャンネル、%2 Hz を受け付けませんでした。</translation>
    </message>
    <message>
        <source>the loudness meter failed.</source>
        <translation>ラウドネス測定に失敗しました。</translation>
    </message>
    <message>
        <source>the MP2 encoder could not start.</source>
        <translation>MP2エンコーダを開始できませんでした。</translation>
    </message>
    <message>
        <source>the MP2 encoder refused its settings.</source>
        <translation>MP2エンコーダが設定を受け付けませんでした。</translation>
    </message>
    <message>
        <source>the MP2 encoder failed.</source>
        <translation>MP2エンコードに失敗しました。</translation>
    </message>
    <message>
        <source>it cannot be read.</source>
        <translation>読み込めません。</translation>
    </message>
    <message>
        <source>it is coded in a way this program cannot read.</source>
        <translation>このプログラムで読めない方式で符号化されています。</translation>
    </message>
    <message>
        <source>its header is damaged: it does not tell a sample rate, channels and coding this program can read.</source>
        <translation>ヘッダーが壊れています: このプログラムで読めるサンプリング周波数・チャンネル数・符号化方式が書かれていません。</translation>
    </message>
    <message>
        <source>it is damaged or truncated.</source>
        <translation>壊れているか途中で切れています。</translation>
    </message>
    <message>
        <source>it is damaged.</source>
        <translation>壊れています。</translation>
    </message>
    <message>
        <source>it is damaged: part of its sound cannot be decoded.</source>
        <translation>壊れています: 音の一部を復号できません。</translation>
    </message>
    <message>
        <source>it cannot be read: there is no such file.</source>
        <translation>読み込めません: そのファイルはありません。</translation>
    </message>
    <message>
        <source>it is a folder, not a file.</source>
        <translation>ファイルではなくフォルダーです。</translation>
    </message>
    <message>
        <source>it is a pipe or a device, not a file: only files are read.</source>
        <translation>ファイルではなくパイプかデバイスです: 読み込めるのはファイルだけです。</translation>
    </message>
    <message>
        <source>its sample rate of %1 Hz is outside the rates this program converts (%2 to %3 Hz).</source>
        <translation>サンプリング周波数 %1 Hz は、このプログラムが変換できる範囲 (%2～%3 Hz) の外です。</translation>
    </message>
    <message>
        <source>the sample rate converter failed (fault %1).</source>
        <translation>サンプリング周波数の変換に失敗しました (障害 %1)。</translation>
    </message>
</context>
<context>
    <name>CapabilityPlugin</name>
    <message>
        <source>Sound playback</source>
        <translation>音声の再生</translation>
    </message>
    <message>
        <source>Sound file conversion</source>
        <translation>音声ファイルの変換</translation>
    </message>
    <message>
        <source>The test-tone encoder</source>
        <translation>テストトーンのエンコーダー</translation>
    </message>
    <message>
        <source>%1 is not installed: %2 is there but does not load; reinstall the program.</source>
        <translation>%1 がインストールされていません: %2 はありますが読み込めません。プログラムを再インストールしてください。</translation>
    </message>
    <message>
        <source>%1 is not installed: %2 is missing from %3.</source>
        <translation>%1 がインストールされていません: %3 に %2 がありません。</translation>
    </message>
    <message>
        <source>%1 is not installed: %2 is from another version of this program.</source>
        <translation>%1 がインストールされていません: %2 はこのプログラムの別のバージョンのものです。</translation>
    </message>
    <message>
        <source>Printing</source>
        <translation>印刷</translation>
    </message>
</context>
<context>
    <name>CardFormatter</name>
    <message>
        <source>%1 failed. %2</source>
        <translation>%1 が失敗しました。%2</translation>
    </message>
    <message>
        <source>Formatting %1 needs administrator rights: run the program as root, or format the card as FAT16 with the desktop&apos;s disk tool.</source>
        <translation>%1 のフォーマットには管理者権限が必要です。プログラムを root として実行するか、デスクトップのディスクツールでカードを FAT16 にフォーマットしてください。</translation>
    </message>
    <message>
        <source>%1 could not be started: %2</source>
        <translation>%1 を起動できませんでした: %2</translation>
    </message>
    <message>
        <source>%1 is not a disk that can be formatted here.</source>
        <translation>%1 はここでフォーマットできるディスクではありません。</translation>
    </message>
    <message>
        <source>%1 is still in use.</source>
        <translation>%1 はまだ使用中です。</translation>
    </message>
    <message>
        <source>The card could not be mounted again at %1.</source>
        <translation>カードを %1 に再びマウントできませんでした。</translation>
    </message>
    <message>
        <source>The card %1 could not be formatted.
%2 said: %3</source>
        <translation>カード %1 をフォーマットできませんでした。
%2 の応答: %3</translation>
    </message>
    <message>
        <source>The card %1 is too small or too large for a FAT file system.</source>
        <translation>カード %1 は FAT ファイルシステムには小さすぎるか大きすぎます。</translation>
    </message>
    <message>
        <source>%1 did not receive a FAT%2 file system.</source>
        <translation>%1 に FAT%2 ファイルシステムを作成できませんでした。</translation>
    </message>
</context>
<context>
    <name>CardWrite</name>
    <message>
        <source>The file being written is too large for the destination drive.</source>
        <translation>書き込むファイルが書き込み先ドライブの容量を超えています。</translation>
    </message>
    <message>
        <source>The setting slot is not ready</source>
        <translation>設定スロットの準備ができていません</translation>
    </message>
    <message>
        <source>Cannot create the folder %1 on the card: %2</source>
        <translation>カードにフォルダー %1 を作成できません: %2</translation>
    </message>
    <message>
        <source>Card write is complete</source>
        <translation>カード書き込みが完了しました</translation>
    </message>
    <message>
        <source>This card is read only</source>
        <translation>このカードは読み取り専用です</translation>
    </message>
    <message>
        <source>Write over the setting data</source>
        <translation>設定データを上書きしますか</translation>
    </message>
    <message>
        <source>The card is not write-protected.
</source>
        <translation>カードは書き込み禁止になっていません。
</translation>
    </message>
    <message>
        <source>Filesystem error :</source>
        <translation>ファイルシステムエラー :</translation>
    </message>
    <message>
        <source>Card write stopped at %1.
%2</source>
        <translation>カード書き込みは %1 で中断しました。
%2</translation>
    </message>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>%1 を読み込めません: %2</translation>
    </message>
    <message>
        <source>The test tone %1 did not reach the card.
%2</source>
        <translation>テストトーン %1 はカードに書き込まれませんでした。
%2</translation>
    </message>
</context>
<context>
    <name>CodePageCheck</name>
    <message>
        <source>%1 %2 holds &quot;%3&quot; (U+%4), which the code page %5 cannot hold.</source>
        <translation>%1 %2 に含まれる「%3」(U+%4) はコードページ %5 で表せません。</translation>
    </message>
    <message>
        <source>Line %1 of %2</source>
        <translation>%2 の %1 行目</translation>
    </message>
    <message>
        <source>Line %1 of %2 (%3)</source>
        <translation>%2 の %1 行目 (%3)</translation>
    </message>
    <message>
        <source>%1 holds bytes that the code page %2 cannot read as they are: %3. Saved again, they would change. Start the program with --encoding and the code page the file was written in, for example --encoding windows-1252 or --encoding UTF-8.</source>
        <translation>%1 に、コードページ %2 ではそのまま読めないバイトがあります: %3。保存し直すと変わってしまいます。ファイルを書いたときのコードページを --encoding に指定してプログラムを起動してください (例: --encoding windows-1252、--encoding UTF-8)。</translation>
    </message>
</context>
<context>
    <name>dlgRecorder</name>
    <message>
        <source>Record a sentence for entry %1</source>
        <translation>項目 %1 のセンテンスを録音</translation>
    </message>
    <message>
        <source>Input:</source>
        <translation>入力:</translation>
    </message>
    <message>
        <source>Level:</source>
        <translation>レベル:</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>録音</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Time recorded</source>
        <translation>録音時間</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>再生</translation>
    </message>
    <message>
        <source>Plays the take as it was recorded.</source>
        <translation>録音したままを再生します。</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>名前:</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Makes a sentence of the take, as an imported recording, and enters it.</source>
        <translation>録音を、取り込んだ録音と同じようにセンテンスにして、項目に入れます。</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>This PC has no audio input: connect a microphone, then press Record again.</source>
        <translation>この PC には音声入力がありません: マイクをつないでから、もう一度「録音」を押してください。</translation>
    </message>
    <message>
        <source>Cannot record: %1</source>
        <translation>録音できません: %1</translation>
    </message>
</context>
<context>
    <name>FileAttributes</name>
    <message>
        <source>Cannot make %1 read-only: %2</source>
        <translation>%1 を読み取り専用にできません: %2</translation>
    </message>
    <message>
        <source>Cannot make %1 writable: %2</source>
        <translation>%1 を書き込み可能にできません: %2</translation>
    </message>
    <message>
        <source>it is a symbolic link</source>
        <translation>シンボリックリンクです</translation>
    </message>
</context>
<context>
    <name>FileCopy</name>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>%1 を読み込めません: %2</translation>
    </message>
    <message>
        <source>Cannot read %1: it is a pipe or a device, not a file: only files are read.</source>
        <translation>%1 を読み込めません: ファイルではなくパイプかデバイスです。読み込めるのはファイルだけです。</translation>
    </message>
</context>
<context>
    <name>FileReplacement</name>
    <message>
        <source>Cannot write %1: it is a symbolic link, and nothing is written through a link.</source>
        <translation>%1 に書き込めません: シンボリックリンクです。リンク経由では書き込みません。</translation>
    </message>
    <message>
        <source>Cannot write %1: it is not a plain file.</source>
        <translation>%1 に書き込めません: 通常のファイルではありません。</translation>
    </message>
    <message>
        <source>Cannot write %1: %2</source>
        <translation>%1 に書き込めません: %2</translation>
    </message>
    <message>
        <source>Cannot write %1: the file is not open.</source>
        <translation>%1 に書き込めません: ファイルが開かれていません。</translation>
    </message>
    <message>
        <source>%1 on the card differs from the file written.</source>
        <translation>カード上の %1 が書き込んだファイルと一致しません。</translation>
    </message>
    <message>
        <source>Cannot read back %1: %2</source>
        <translation>%1 を読み戻せません: %2</translation>
    </message>
    <message>
        <source>Cannot write %1: the file is read-only.</source>
        <translation>%1 に書き込めません: ファイルは読み取り専用です。</translation>
    </message>
    <message>
        <source>Cannot write %1: its folder %2 cannot be written to, and the new content is always written beside the file first.</source>
        <translation>%1 に書き込めません: フォルダー %2 に書き込めません。新しい内容は必ず先にファイルの横に書き込まれます。</translation>
    </message>
</context>
<context>
    <name>LevelMeter</name>
    <message>
        <source>Input level</source>
        <translation>入力レベル</translation>
    </message>
    <message>
        <source>below %1 dBFS</source>
        <translation>%1 dBFS 未満</translation>
    </message>
    <message>
        <source>%1 dBFS</source>
        <translation>%1 dBFS</translation>
    </message>
    <message>
        <source>%1, clipped</source>
        <translation>%1、クリップ</translation>
    </message>
    <message>
        <source>Clipped</source>
        <translation>クリップ</translation>
    </message>
</context>
<context>
    <name>OperatorMessages</name>
    <message>
        <source>Incorrect value has been entered.</source>
        <translation>不正な値が入力されました。</translation>
    </message>
    <message>
        <source>Updating the contents of edit has not been continued. Does close it?</source>
        <translation>編集内容が更新されていません。閉じますか?</translation>
    </message>
</context>
<context>
    <name>PrintOut</name>
    <message>
        <source>Playback method</source>
        <translation>再生方法</translation>
    </message>
    <message>
        <source>Output Level</source>
        <translation>出力レベル</translation>
    </message>
    <message>
        <source>Repeat count</source>
        <translation>リピート回数</translation>
    </message>
    <message>
        <source>Repeat interval</source>
        <translation>リピート間隔</translation>
    </message>
    <message>
        <source>Interval busy output</source>
        <translation>インターバル中ビジー出力</translation>
    </message>
    <message>
        <source>(no steps)</source>
        <translation>(ステップなし)</translation>
    </message>
    <message>
        <source>File information</source>
        <translation>ファイル情報</translation>
    </message>
    <message>
        <source>File name</source>
        <translation>ファイル名</translation>
    </message>
    <message>
        <source>File location</source>
        <translation>ファイルの場所</translation>
    </message>
    <message>
        <source>Project name</source>
        <translation>プロジェクト名</translation>
    </message>
    <message>
        <source>Card name</source>
        <translation>カード名</translation>
    </message>
    <message>
        <source>Write protect</source>
        <translation>書き込み禁止</translation>
    </message>
    <message>
        <source>ON</source>
        <translation>ON</translation>
    </message>
    <message>
        <source>OFF</source>
        <translation>OFF</translation>
    </message>
    <message>
        <source>Test tone</source>
        <translation>テストトーン</translation>
    </message>
    <message>
        <source>Sentence table</source>
        <translation>文章テーブル</translation>
    </message>
    <message>
        <source>Control</source>
        <translation>管理番号</translation>
    </message>
    <message>
        <source>File information copy</source>
        <translation>ファイル情報印刷</translation>
    </message>
    <message>
        <source>All setting data copy</source>
        <translation>全設定データ印刷</translation>
    </message>
    <message>
        <source>All program copy</source>
        <translation>全プログラム印刷</translation>
    </message>
    <message>
        <source>Print out program number:</source>
        <translation>印刷プログラム番号:</translation>
    </message>
    <message>
        <source>(no project name)</source>
        <translation>(プロジェクト名なし)</translation>
    </message>
    <message>
        <source>page %1 / %2</source>
        <translation>%1 / %2 ページ</translation>
    </message>
    <message>
        <source>Continuous</source>
        <translation>連続</translation>
    </message>
    <message>
        <source>Single</source>
        <translation>シングル</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>リピート</translation>
    </message>
    <message>
        <source>Endless</source>
        <translation>エンドレス</translation>
    </message>
    <message>
        <source>Setting Data Error</source>
        <translation>設定データエラー</translation>
    </message>
    <message>
        <source>Sec</source>
        <translation>秒</translation>
    </message>
    <message>
        <source>Minute</source>
        <translation>分</translation>
    </message>
    <message>
        <source>Creator</source>
        <translation>作成者</translation>
    </message>
    <message>
        <source>Explanation</source>
        <translation>説明</translation>
    </message>
    <message>
        <source>Sentences</source>
        <translation>文章数</translation>
    </message>
    <message>
        <source>No.</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>Programs</source>
        <translation>プログラム</translation>
    </message>
    <message>
        <source>Playing time</source>
        <translation>再生時間</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>時間</translation>
    </message>
    <message>
        <source>not found</source>
        <translation>見つかりません</translation>
    </message>
</context>
<context>
    <name>ProgramDuration</name>
    <message>
        <source>%1 (%2 not found)</source>
        <translation>%1 (%2 が見つかりません)</translation>
    </message>
    <message>
        <source>%1 (%2 and %3 more not found)</source>
        <translation>%1 (%2 ほか %3 件が見つかりません)</translation>
    </message>
</context>
<context>
    <name>ProgramFieldRules</name>
    <message>
        <source>Endless</source>
        <translation>エンドレス</translation>
    </message>
</context>
<context>
    <name>ProgramFolder</name>
    <message>
        <source>Until it can be written, sentences cannot be added to projects and the card&apos;s test tone cannot be made.</source>
        <translation>書き込めるようになるまで、プロジェクトに文章を追加できず、カードのテストトーンも作成できません。</translation>
    </message>
    <message>
        <source>The program folder %1 does not exist and cannot be made.</source>
        <translation>プログラムフォルダー %1 が存在せず、作成もできません。</translation>
    </message>
    <message>
        <source>The program folder %1 cannot be written: %2.</source>
        <translation>プログラムフォルダー %1 に書き込めません: %2。</translation>
    </message>
</context>
<context>
    <name>ProgramSound</name>
    <message>
        <source>%1 cannot be played: %2</source>
        <translation>%1 を再生できません: %2</translation>
    </message>
    <message>
        <source>%1 holds no MPEG audio.</source>
        <translation>%1 には MPEG オーディオがありません。</translation>
    </message>
    <message>
        <source>sentence %1 has no file in the sentence table.</source>
        <translation>文章 %1 には文章テーブルでファイルが指定されていません。</translation>
    </message>
    <message>
        <source>%1 is in none of the work folder, the project&apos;s folder and the sentence folder.</source>
        <translation>%1 は作業フォルダー、プロジェクトのフォルダー、文章フォルダーのどれにもありません。</translation>
    </message>
    <message>
        <source>%1 plays as silence: %2 cannot be played: %3</source>
        <translation>%1 は無音で再生されます: %2 を再生できません: %3</translation>
    </message>
    <message>
        <source>Cannot write %1: the program plays until stopped; say how many passes to write.</source>
        <translation>%1 を書き込めません: このプログラムは停止するまで再生されます。書き込む回数を指定してください。</translation>
    </message>
    <message>
        <source>Cannot write %1: the sound is longer than a WAV file can hold.</source>
        <translation>%1 を書き込めません: 音が WAV ファイルに収まる長さを超えています。</translation>
    </message>
    <message>
        <source>Cannot write %1: the sound ended early.</source>
        <translation>%1 を書き込めません: 音が途中で終わりました。</translation>
    </message>
</context>
<context>
    <name>ProgramOptionWord</name>
    <message>
        <source>Continuous</source>
        <translation>連続</translation>
    </message>
    <message>
        <source>Single-Program</source>
        <translation>シングルプログラム</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>リピート</translation>
    </message>
    <message>
        <source>Endless</source>
        <translation>エンドレス</translation>
    </message>
</context>
<context>
    <name>ProjectCommands</name>
    <message>
        <source>Open</source>
        <translation>開く</translation>
    </message>
    <message>
        <source>Setting file error!</source>
        <translation>設定ファイルエラー!</translation>
    </message>
    <message>
        <source>Save as</source>
        <translation>名前を付けて保存</translation>
    </message>
    <message>
        <source>DQ-480 Setting Software : </source>
        <translation>DQ-480 設定ソフト : </translation>
    </message>
    <message>
        <source>The setting file was not saved.
</source>
        <translation>設定ファイルは保存されませんでした。
</translation>
    </message>
</context>
<context>
    <name>ProjectFile</name>
    <message>
        <source>%1 in %2.</source>
        <translation>%2 の %1。</translation>
    </message>
    <message>
        <source>Updating the setting data has not been continued. Does close it?</source>
        <translation>設定データが保存されていません。閉じますか?</translation>
    </message>
</context>
<context>
    <name>SentenceFolders</name>
    <message>
        <source>This folder already contains read-only a file named &apos;</source>
        <translation>このフォルダーには読み取り専用のファイル &apos;</translation>
    </message>
    <message>
        <source><byte value="xd"/>
&apos;,Would like to replace the existing file?</source>
        <translation><byte value="xd"/>
&apos; が既にあります。既存のファイルを置き換えますか?</translation>
    </message>
    <message>
        <source>Cannot create the folder %1</source>
        <translation>フォルダー %1 を作成できません</translation>
    </message>
</context>
<context>
    <name>SentencePlayer</name>
    <message>
        <source>Cannot play %1: %2</source>
        <translation>%1 を再生できません: %2</translation>
    </message>
</context>
<context>
    <name>SettingFileIO</name>
    <message>
        <source>%1 is a folder, not a file.</source>
        <translation>%1 はファイルではなくフォルダーです。</translation>
    </message>
    <message>
        <source>Cannot open %1: %2</source>
        <translation>%1 を開けません: %2</translation>
    </message>
    <message>
        <source>%1 is too large to be a setting file (%2 bytes).</source>
        <translation>%1 は設定ファイルとしては大きすぎます (%2 バイト)。</translation>
    </message>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>%1 を読み込めません: %2</translation>
    </message>
    <message>
        <source>%1 is a pipe or a device, not a file: only files are read.</source>
        <translation>%1 はファイルではなくパイプかデバイスです: 読み込めるのはファイルだけです。</translation>
    </message>
</context>
<context>
    <name>SettingFileReader</name>
    <message>
        <source>%1 %2 cannot be used as a name</source>
        <translation>%1 %2 は名前として使用できません</translation>
    </message>
</context>
<context>
    <name>SoundDevices</name>
    <message>
        <source>the input &quot;%1&quot; stopped sending sound.</source>
        <translation>入力「%1」から音が届かなくなりました。</translation>
    </message>
    <message>
        <source>the PC was too busy to keep up with the input &quot;%1&quot;, and sound was lost.</source>
        <translation>PC が忙しくて入力「%1」に追いつけず、音が失われました。</translation>
    </message>
    <message>
        <source>the PC&apos;s audio output stopped playing.</source>
        <translation>PC の音声出力が再生を止めました。</translation>
    </message>
    <message>
        <source>the input is not there any more.</source>
        <translation>その入力はもうありません。</translation>
    </message>
    <message>
        <source>the input &quot;%1&quot; cannot be opened.</source>
        <translation>入力「%1」を開けません。</translation>
    </message>
    <message>
        <source>the PC&apos;s sound system does not start.</source>
        <translation>PC のサウンド機能を開始できません。</translation>
    </message>
    <message>
        <source>this PC has no audio output.</source>
        <translation>この PC には音声出力がありません。</translation>
    </message>
    <message>
        <source>the PC&apos;s audio output does not take %1 Hz.</source>
        <translation>PC の音声出力は %1 Hz を受け付けません。</translation>
    </message>
    <message>
        <source>the PC&apos;s audio output cannot be opened.</source>
        <translation>PC の音声出力を開けません。</translation>
    </message>
    <message>
        <source>the input &quot;%1&quot; is gone: it was unplugged, switched off or taken away by the sound system.</source>
        <translation>入力「%1」がなくなりました: 抜かれたか、電源が切られたか、サウンドシステムから外されました。</translation>
    </message>
    <message>
        <source>the input &quot;%1&quot; does not record in mono.</source>
        <translation>入力「%1」はモノラルで録音できません。</translation>
    </message>
</context>
<context>
    <name>TakeRecorder</name>
    <message>
        <source>Cannot record: %1</source>
        <translation>録音できません: %1</translation>
    </message>
    <message>
        <source>The recording stopped at %1: %2 The take so far is kept.</source>
        <translation>録音は %1 で止まりました: %2 そこまでの録音は残してあります。</translation>
    </message>
    <message>
        <source>The recording stopped at %1. %2. The take so far is kept.</source>
        <translation>録音は %1 で止まりました。%2。そこまでの録音は残してあります。</translation>
    </message>
    <message>
        <source>The recording stopped by itself at %1, the longest a sentence is made from.</source>
        <translation>録音は、センテンスにできる最長の %1 で自動的に止まりました。</translation>
    </message>
    <message>
        <source>the input stopped sending sound.</source>
        <translation>入力から音が届かなくなりました。</translation>
    </message>
</context>
<context>
    <name>TestTone</name>
    <message>
        <source>The MP2 encoder could not start.</source>
        <translation>MP2 エンコーダーを開始できませんでした。</translation>
    </message>
    <message>
        <source>The MP2 encoder refused the test tone&apos;s settings.</source>
        <translation>MP2 エンコーダーがテストトーンの設定を受け付けませんでした。</translation>
    </message>
    <message>
        <source>The MP2 encoder failed on the test tone.</source>
        <translation>MP2 エンコーダーがテストトーンの作成に失敗しました。</translation>
    </message>
</context>
<context>
    <name>TextExcerpt</name>
    <message>
        <source>%1 (%2 characters)</source>
        <translation>%1 (%2 文字)</translation>
    </message>
</context>
<context>
    <name>TextShape</name>
    <message>
        <source>%1 is UTF-16 text (two bytes a character), but setting files have one byte a character, in the code page %2. Save it again in that code page.</source>
        <translation>%1 は UTF-16 (1 文字 2 バイト) のテキストですが、設定ファイルはコードページ %2 の 1 文字 1 バイトのテキストです。そのコードページで保存し直してください。</translation>
    </message>
    <message>
        <source>%1 begins with a UTF-8 byte order mark, which setting files do not have. Save it again without the mark, in the code page %2.</source>
        <translation>%1 は UTF-8 のバイト順マークで始まっていますが、設定ファイルにはこのマークはありません。マークなしで、コードページ %2 で保存し直してください。</translation>
    </message>
    <message>
        <source>The lines of %1 end with CR alone, as on old Macintosh computers, but setting files end each line with CR LF. Save it again with CR LF line ends.</source>
        <translation>%1 の行末は古い Macintosh のように CR だけですが、設定ファイルの行末は CR LF です。行末を CR LF にして保存し直してください。</translation>
    </message>
</context>
<context>
    <name>UDisksFormat</name>
    <message>
        <source>The card could not be formatted (%1): %2</source>
        <translation>カードをフォーマットできませんでした (%1): %2</translation>
    </message>
</context>
<context>
    <name>dlgCaPc</name>
    <message>
        <source>File copy complete</source>
        <translation>ファイルのコピーが完了しました</translation>
    </message>
    <message>
        <source>Folder name</source>
        <translation>フォルダー名</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>開始</translation>
    </message>
    <message>
        <source>Start copying all sentences</source>
        <translation>全文章のコピーを開始</translation>
    </message>
    <message>
        <source>Start copying the selected sentence</source>
        <translation>選択した文章のコピーを開始</translation>
    </message>
    <message>
        <source>Path Set</source>
        <translation>パス設定</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>All sentence</source>
        <translation>全文章</translation>
    </message>
    <message>
        <source>Sentence selection</source>
        <translation>文章選択</translation>
    </message>
    <message>
        <source>Filename</source>
        <translation>ファイル名</translation>
    </message>
    <message>
        <source>Card creation Sentence data copy Card -&gt; PC : </source>
        <translation>カード作成 文章データコピー カード -&gt; PC : </translation>
    </message>
    <message>
        <source>The copy stopped.
</source>
        <translation>コピーを中断しました。
</translation>
    </message>
    <message>
        <source>Cannot create the folder %1</source>
        <translation>フォルダー %1 を作成できません</translation>
    </message>
    <message>
        <source>%1 is not on the card.</source>
        <translation>%1 はカードにありません。</translation>
    </message>
    <message>
        <source>Filesystem Error  File:</source>
        <translation>ファイルシステムエラー  ファイル:</translation>
    </message>
</context>
<context>
    <name>dlgErrLog</name>
    <message>
        <source> Not find file list</source>
        <translation> 見つからないファイル一覧</translation>
    </message>
    <message>
        <source>Not find file list</source>
        <translation>見つからないファイル一覧</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source> Not find file count: </source>
        <translation> 見つからないファイル数: </translation>
    </message>
</context>
<context>
    <name>dlgFMT</name>
    <message>
        <source>Exit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>フォーマット</translation>
    </message>
    <message>
        <source> Format FAT16 file system</source>
        <translation> FAT16 ファイルシステムでフォーマット</translation>
    </message>
    <message>
        <source> DQ-480 format error</source>
        <translation> DQ-480 フォーマットエラー</translation>
    </message>
    <message>
        <source> FAT16 format complete</source>
        <translation> FAT16 フォーマット完了</translation>
    </message>
    <message>
        <source> DQ-480 file setting</source>
        <translation> DQ-480 ファイル設定</translation>
    </message>
    <message>
        <source> DQ-480 format complete</source>
        <translation> DQ-480 フォーマット完了</translation>
    </message>
</context>
<context>
    <name>dlgPcCa</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Path set</source>
        <translation>パス設定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>適用</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Move forward</source>
        <translation>前に詰める</translation>
    </message>
    <message>
        <source>Insert</source>
        <translation>挿入</translation>
    </message>
    <message>
        <source>All file</source>
        <translation>全ファイル</translation>
    </message>
    <message>
        <source>Sentence columns</source>
        <translation>文章の列</translation>
    </message>
    <message>
        <source>Card creation Sentence data copy PC -&gt; Card : </source>
        <translation>カード作成 文章データコピー PC -&gt; カード : </translation>
    </message>
    <message>
        <source>%1 is not in the sentence folder %2.</source>
        <translation>%1 は文章フォルダー %2 にありません。</translation>
    </message>
    <message>
        <source>Sentence file number error!</source>
        <translation>文章ファイル数エラー!</translation>
    </message>
    <message>
        <source>512 step is programmed. Can not insert</source>
        <translation>512 ステップ設定済みです。挿入できません</translation>
    </message>
    <message>
        <source>128 step is programmed. Can not insert</source>
        <translation>128 ステップ設定済みです。挿入できません</translation>
    </message>
    <message>
        <source>%1 was not found.</source>
        <translation>%1 が見つかりませんでした。</translation>
    </message>
    <message>
        <source>Some sentence files were not stored in %1:
</source>
        <translation>一部の文章ファイルを %1 に保存できませんでした:
</translation>
    </message>
    <message>
        <source>Path :</source>
        <translation>パス :</translation>
    </message>
    <message>
        <source>The import was cancelled.</source>
        <translation>取り込みを中止しました。</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>再生</translation>
    </message>
    <message>
        <source>This PC has no audio output.</source>
        <translation>このPCには音声出力がありません。</translation>
    </message>
    <message>
        <source>Import...</source>
        <translation>取り込み...</translation>
    </message>
    <message>
        <source>Makes sentences of recordings, from the current entry on.</source>
        <translation>録音からセンテンスを作成し、現在の項目から順に登録します。</translation>
    </message>
    <message>
        <source>Plays the current entry&apos;s sentence (Ctrl+P).</source>
        <translation>現在の項目のセンテンスを再生します (Ctrl+P)。</translation>
    </message>
    <message>
        <source>Playing time %1</source>
        <translation>再生時間 %1</translation>
    </message>
    <message>
        <source>Import recordings</source>
        <translation>録音の取り込み</translation>
    </message>
    <message>
        <source>Recordings (%1)</source>
        <translation>録音 (%1)</translation>
    </message>
    <message>
        <source>The table has no entry from %1 on: nothing was imported.</source>
        <translation>%1 以降に項目がありません。何も取り込みませんでした。</translation>
    </message>
    <message>
        <source>The recordings replace these entries:</source>
        <translation>次の項目は録音で置き換えられます:</translation>
    </message>
    <message>
        <source>The table ends at entry %1; these recordings are left out:</source>
        <translation>テーブルは項目 %1 で終わります。次の録音は取り込まれません:</translation>
    </message>
    <message>
        <source>Import the recordings?</source>
        <translation>録音を取り込みますか?</translation>
    </message>
    <message>
        <source>Cannot enter %1 as entry %2: entry %3 stays as it was and holds a sentence of that name.</source>
        <translation>%1 を項目 %2 に入れられません: 項目 %3 は元のままで、同じ名前のセンテンスを持っています。</translation>
    </message>
    <message>
        <source>Importing recordings... %1 of %2 done</source>
        <translation>録音を取り込んでいます... %2 件中 %1 件完了</translation>
    </message>
    <message>
        <source>Record...</source>
        <translation>録音...</translation>
    </message>
    <message>
        <source>Records a sentence at the PC into the current entry.</source>
        <translation>PC でセンテンスを録音して、現在の項目に入れます。</translation>
    </message>
</context>
<context>
    <name>dlgSentenceNames</name>
    <message>
        <source>Sentence names</source>
        <translation>センテンス名</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>At most 8 characters before .MP2, no blanks, full stops or \ / : * ? &lt; &gt; | , &quot; ;, not a Windows device name such as CON, and not the name of another entry.</source>
        <translation>.MP2 の前は 8 文字まで。空白、ピリオド、\ / : * ? &lt; &gt; | , &quot; ; は使えません。CON などの Windows のデバイス名と、ほかの項目の名前も使えません。</translation>
    </message>
    <message>
        <source>These recordings need another sentence name. %1 The names below fit; change them if you like.</source>
        <translation>次の録音には別のセンテンス名が必要です。%1 下の名前はこの条件に合っています。必要なら変更してください。</translation>
    </message>
</context>
<context>
    <name>frmAbout</name>
    <message>
        <source>Version Information(Dq480pcsoft)</source>
        <translation>バージョン情報(Dq480pcsoft)</translation>
    </message>
    <message>
        <source>Program icon</source>
        <translation>プログラムのアイコン</translation>
    </message>
    <message>
        <source>Dq480pcsoft Version </source>
        <translation>Dq480pcsoft バージョン </translation>
    </message>
    <message>
        <source>Setting software for the DQ-480 digital voice-message announcer: sentence table, programs, card write and card format.</source>
        <translation>DQ-480 デジタル音声メッセージアナウンサーの設定ソフト: 文章テーブル、プログラム、カード書き込み、カードフォーマット。</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>&amp;System Info...</source>
        <translation>システム情報(&amp;S)...</translation>
    </message>
</context>
<context>
    <name>frmEdit</name>
    <message>
        <source>Program</source>
        <translation>プログラム</translation>
    </message>
    <message>
        <source>Card Edit</source>
        <translation>カード編集</translation>
    </message>
    <message>
        <source>Data information</source>
        <translation>データ情報</translation>
    </message>
    <message>
        <source>Card write</source>
        <translation>カード書き込み</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>適用</translation>
    </message>
    <message>
        <source>Program edit</source>
        <translation>プログラム編集</translation>
    </message>
    <message>
        <source>Program No</source>
        <translation>プログラム番号</translation>
    </message>
    <message>
        <source>Program No: up or down</source>
        <translation>プログラム番号: 上下</translation>
    </message>
    <message>
        <source>Program No:</source>
        <translation>プログラム番号:</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>開く</translation>
    </message>
    <message>
        <source>Program copying</source>
        <translation>プログラムコピー</translation>
    </message>
    <message>
        <source>Copy from program</source>
        <translation>コピー元プログラム</translation>
    </message>
    <message>
        <source>Copy to program</source>
        <translation>コピー先プログラム</translation>
    </message>
    <message>
        <source>Copy from program: up or down</source>
        <translation>コピー元プログラム: 上下</translation>
    </message>
    <message>
        <source>Copy to program: up or down</source>
        <translation>コピー先プログラム: 上下</translation>
    </message>
    <message>
        <source>Execute</source>
        <translation>実行</translation>
    </message>
    <message>
        <source>Slot</source>
        <translation>スロット</translation>
    </message>
    <message>
        <source>Card format</source>
        <translation>カードフォーマット</translation>
    </message>
    <message>
        <source>512 sentence</source>
        <translation>512 文章</translation>
    </message>
    <message>
        <source>128 sentence</source>
        <translation>128 文章</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>開始</translation>
    </message>
    <message>
        <source>Start card format</source>
        <translation>カードフォーマットを開始</translation>
    </message>
    <message>
        <source>Sentence data copy</source>
        <translation>文章データコピー</translation>
    </message>
    <message>
        <source>Start sentence copy PC -&gt; Card</source>
        <translation>文章コピー PC -&gt; カード を開始</translation>
    </message>
    <message>
        <source>Start sentence copy Card -&gt; PC</source>
        <translation>文章コピー カード -&gt; PC を開始</translation>
    </message>
    <message>
        <source>PC -&gt; Card</source>
        <translation>PC -&gt; カード</translation>
    </message>
    <message>
        <source>Card -&gt; PC</source>
        <translation>カード -&gt; PC</translation>
    </message>
    <message>
        <source>Card name</source>
        <translation>カード名</translation>
    </message>
    <message>
        <source>Card name:</source>
        <translation>カード名:</translation>
    </message>
    <message>
        <source>Write protect</source>
        <translation>書き込み禁止</translation>
    </message>
    <message>
        <source>Software write protect</source>
        <translation>ソフトウェア書き込み禁止</translation>
    </message>
    <message>
        <source>ON</source>
        <translation>ON</translation>
    </message>
    <message>
        <source>OFF</source>
        <translation>OFF</translation>
    </message>
    <message>
        <source>Filename:</source>
        <translation>ファイル名:</translation>
    </message>
    <message>
        <source>File location:</source>
        <translation>ファイルの場所:</translation>
    </message>
    <message>
        <source>Project name:</source>
        <translation>プロジェクト名:</translation>
    </message>
    <message>
        <source>Creator:</source>
        <translation>作成者:</translation>
    </message>
    <message>
        <source>Explanation:</source>
        <translation>説明:</translation>
    </message>
    <message>
        <source>DQ-480 Setting Software : </source>
        <translation>DQ-480 設定ソフト : </translation>
    </message>
    <message>
        <source>Delete message file 129 - 512</source>
        <translation>メッセージファイル 129 - 512 を削除します</translation>
    </message>
    <message>
        <source>Write setting file at drive:</source>
        <translation>設定ファイルを書き込むドライブ:</translation>
    </message>
    <message>
        <source>Format start drive: </source>
        <translation>フォーマットを開始するドライブ: </translation>
    </message>
    <message>
        <source>DQ480 Format error end!</source>
        <translation>DQ480 フォーマットがエラーで終了しました!</translation>
    </message>
    <message>
        <source>Save changes to DQ-480 Setting Software </source>
        <translation>DQ-480 設定ソフトへの変更を保存しますか </translation>
    </message>
    <message>
        <source>Nothing</source>
        <translation>なし</translation>
    </message>
    <message>
        <source>Program setting open 8 pattern</source>
        <translation>プログラム設定は 8 個まで開けます</translation>
    </message>
    <message>
        <source>This Program number is already open</source>
        <translation>このプログラム番号は既に開いています</translation>
    </message>
    <message>
        <source>Program setting copy </source>
        <translation>プログラム設定をコピー </translation>
    </message>
</context>
<context>
    <name>frmMain</name>
    <message>
        <source>File(&amp;F)</source>
        <translation>ファイル(&amp;F)</translation>
    </message>
    <message>
        <source>New(&amp;N)</source>
        <translation>新規作成(&amp;N)</translation>
    </message>
    <message>
        <source>Open(&amp;S)</source>
        <translation>開く(&amp;S)</translation>
    </message>
    <message>
        <source>Save(&amp;S)</source>
        <translation>上書き保存(&amp;S)</translation>
    </message>
    <message>
        <source>Save as(&amp;A)</source>
        <translation>名前を付けて保存(&amp;A)</translation>
    </message>
    <message>
        <source>Card write</source>
        <translation>カード書き込み</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>印刷</translation>
    </message>
    <message>
        <source>File information copy</source>
        <translation>ファイル情報印刷</translation>
    </message>
    <message>
        <source>All setting data copy</source>
        <translation>全設定データ印刷</translation>
    </message>
    <message>
        <source>All program copy</source>
        <translation>全プログラム印刷</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Tool(&amp;T)</source>
        <translation>ツール(&amp;T)</translation>
    </message>
    <message>
        <source>Card slot setting</source>
        <translation>カードスロット設定</translation>
    </message>
    <message>
        <source>Surveillance file enable</source>
        <translation>監視ファイル有効</translation>
    </message>
    <message>
        <source>Help(&amp;H)</source>
        <translation>ヘルプ(&amp;H)</translation>
    </message>
    <message>
        <source>Toolbar</source>
        <translation>ツールバー</translation>
    </message>
    <message>
        <source>New</source>
        <translation>新規</translation>
    </message>
    <message>
        <source>New project</source>
        <translation>新規プロジェクト</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>開く</translation>
    </message>
    <message>
        <source>Open a setting file</source>
        <translation>設定ファイルを開く</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Save the setting file</source>
        <translation>設定ファイルを保存</translation>
    </message>
    <message>
        <source>Print the setting data</source>
        <translation>設定データを印刷</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>ヘルプ</translation>
    </message>
    <message>
        <source>Version information</source>
        <translation>バージョン情報</translation>
    </message>
    <message>
        <source>DQ-480 Setting soft is starting already</source>
        <translation>DQ-480 設定ソフトは既に起動しています</translation>
    </message>
    <message>
        <source>Nothing</source>
        <translation>なし</translation>
    </message>
    <message>
        <source>Card slot: </source>
        <translation>カードスロット: </translation>
    </message>
    <message>
        <source>Card slot: Nothing</source>
        <translation>カードスロット: なし</translation>
    </message>
    <message>
        <source>Filename: </source>
        <translation>ファイル名: </translation>
    </message>
    <message>
        <source>File location: </source>
        <translation>ファイルの場所: </translation>
    </message>
    <message>
        <source>New File</source>
        <translation>新規ファイル</translation>
    </message>
</context>
<context>
    <name>frmPjName</name>
    <message>
        <source> Project name setting</source>
        <translation> プロジェクト名設定</translation>
    </message>
    <message>
        <source> Please input &apos;Project name&apos;</source>
        <translation> 「プロジェクト名」を入力してください</translation>
    </message>
    <message>
        <source>Please input &apos;Project name&apos;</source>
        <translation>「プロジェクト名」を入力してください</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source> Set folder of Sentence file:</source>
        <translation> 文章ファイルのフォルダーを設定します:</translation>
    </message>
</context>
<context>
    <name>frmPrintPage</name>
    <message>
        <source>All pages</source>
        <translation>すべてのページ</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>ページ指定</translation>
    </message>
    <message>
        <source>Print setting</source>
        <translation>印刷設定</translation>
    </message>
    <message>
        <source>From page</source>
        <translation>開始ページ</translation>
    </message>
    <message>
        <source>To page</source>
        <translation>終了ページ</translation>
    </message>
    <message>
        <source>&amp;Printer:</source>
        <translation>プリンター(&amp;P):</translation>
    </message>
    <message>
        <source>Print range</source>
        <translation>印刷範囲</translation>
    </message>
    <message>
        <source>to</source>
        <translation>～</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>プレビュー</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>印刷</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Save as PDF</source>
        <translation>PDF として保存</translation>
    </message>
    <message>
        <source>Cannot write %1</source>
        <translation>%1 に書き込めません</translation>
    </message>
    <message>
        <source>The printer %1 could not print.</source>
        <translation>プリンター %1 で印刷できませんでした。</translation>
    </message>
    <message>
        <source>Print preview</source>
        <translation>印刷プレビュー</translation>
    </message>
</context>
<context>
    <name>frmProg</name>
    <message>
        <source>Program name:</source>
        <translation>プログラム名:</translation>
    </message>
    <message>
        <source>Playback method</source>
        <translation>再生方法</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>リピート</translation>
    </message>
    <message>
        <source>Repeat No: up or down</source>
        <translation>リピート回数: 上下</translation>
    </message>
    <message>
        <source>Repeat No:</source>
        <translation>リピート回数:</translation>
    </message>
    <message>
        <source>Interval</source>
        <translation>インターバル</translation>
    </message>
    <message>
        <source>Interval: up or down</source>
        <translation>インターバル: 上下</translation>
    </message>
    <message>
        <source>Interval timer:</source>
        <translation>インターバルタイマー:</translation>
    </message>
    <message>
        <source>sec</source>
        <translation>秒</translation>
    </message>
    <message>
        <source>min</source>
        <translation>分</translation>
    </message>
    <message>
        <source>Interval busy</source>
        <translation>インターバル中ビジー</translation>
    </message>
    <message>
        <source>ON</source>
        <translation>ON</translation>
    </message>
    <message>
        <source>OFF</source>
        <translation>OFF</translation>
    </message>
    <message>
        <source>Output level: up or down</source>
        <translation>出力レベル: 上下</translation>
    </message>
    <message>
        <source>Output level</source>
        <translation>出力レベル</translation>
    </message>
    <message>
        <source>Step input</source>
        <translation>ステップ入力</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>印刷</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>適用</translation>
    </message>
    <message>
        <source>Program : </source>
        <translation>プログラム : </translation>
    </message>
    <message>
        <source>Program No:</source>
        <translation>プログラム番号:</translation>
    </message>
    <message>
        <source>Repeat Interval:</source>
        <translation>リピート間隔:</translation>
    </message>
    <message>
        <source>Play Interval(sec):</source>
        <translation>再生間隔(秒):</translation>
    </message>
    <message>
        <source>Playing time: %1</source>
        <translation>再生時間: %1</translation>
    </message>
    <message>
        <source>Play program</source>
        <translation>プログラム再生</translation>
    </message>
    <message>
        <source>Plays the program&apos;s steps on the PC&apos;s audio output as the device will.</source>
        <translation>プログラムのステップを、本体と同じように PC の音声出力で再生します。</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Cannot play %1: %2</source>
        <translation>%1 を再生できません: %2</translation>
    </message>
    <message>
        <source>Played %1</source>
        <translation>経過 %1</translation>
    </message>
    <message>
        <source>Playing step %1: %2</source>
        <translation>ステップ %1 を再生中: %2</translation>
    </message>
    <message>
        <source>Waiting for pass %1</source>
        <translation>%1 回目を待っています</translation>
    </message>
    <message>
        <source>Playing</source>
        <translation>再生中</translation>
    </message>
    <message>
        <source>%1, pass %2</source>
        <translation>%1、%2 回目</translation>
    </message>
    <message>
        <source>%1, pass %2 of %3</source>
        <translation>%1、%2 / %3 回目</translation>
    </message>
    <message>
        <source>The playing stopped: %1</source>
        <translation>再生が止まりました: %1</translation>
    </message>
    <message>
        <source>Stopped.</source>
        <translation>停止しました。</translation>
    </message>
    <message>
        <source>Played to the end.</source>
        <translation>最後まで再生しました。</translation>
    </message>
    <message>
        <source>Skipped step %1, %2: %3</source>
        <translation>ステップ %1、%2 を飛ばしました: %3</translation>
    </message>
</context>
<context>
    <name>frmSetPath</name>
    <message>
        <source>Path Setting</source>
        <translation>パス設定</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>フォルダー</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>ファイル</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>&amp;Drive:</source>
        <translation>ドライブ(&amp;D):</translation>
    </message>
    <message>
        <source>F&amp;older:</source>
        <translation>フォルダー(&amp;O):</translation>
    </message>
    <message>
        <source>&amp;Files:</source>
        <translation>ファイル(&amp;F):</translation>
    </message>
</context>
<context>
    <name>frmSplash</name>
    <message>
        <source>Ver </source>
        <translation>Ver </translation>
    </message>
</context>
<context>
    <name>frmStep</name>
    <message>
        <source>Insert</source>
        <translation>挿入</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Close gaps</source>
        <translation>空きを詰める</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>適用</translation>
    </message>
    <message>
        <source>Step columns</source>
        <translation>ステップの列</translation>
    </message>
    <message>
        <source>Step Input : </source>
        <translation>ステップ入力 : </translation>
    </message>
    <message>
        <source>128 step is programmed. Can not insert</source>
        <translation>128 ステップ設定済みです。挿入できません</translation>
    </message>
    <message>
        <source>All steps deleted. Will set default steps.</source>
        <translation>全ステップを削除しました。初期ステップを設定します。</translation>
    </message>
    <message>
        <source>Playing</source>
        <translation>再生中</translation>
    </message>
</context>
</TS>
