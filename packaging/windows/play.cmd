@rem Starts Vorn 1 TTS. Options may follow; they go to the game.
@start "" "%~dp0vorn1.exe" %*
